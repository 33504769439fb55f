// Module handles: the base address at which the dynamic loader mapped a library (or the
// program itself), and the file behind it.

#include "host/OS_Module.h"

#include <dlfcn.h>
#include <link.h>

#include <filesystem>
#include <system_error>

OS_ModuleHandle OS_ModuleFromAddress(const void* address) {
    if (address == nullptr) {
        return nullptr;
    }
    Dl_info info{};
    if (::dladdr(address, &info) == 0) {
        return nullptr;
    }
    return info.dli_fbase;
}

std::string OS_ModulePath(OS_ModuleHandle module) {
    if (module == nullptr) {
        return "";
    }
    Dl_info info{};
    link_map* map = nullptr;
    if (::dladdr1(module, &info, reinterpret_cast<void**>(&map), RTLD_DL_LINKMAP) == 0 ||
        info.dli_fbase != module || map == nullptr) {
        return "";
    }
    if (map->l_name != nullptr && map->l_name[0] != '\0') {
        return map->l_name;
    }
    // The program itself has no name in the loader's list.
    std::error_code error;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::string() : self.string();
}
