// Module handles on Windows: a module's handle is the base address at which the loader
// mapped it, as on the other platforms; the file behind it comes from the loader too.
// Lean, and without the min and max macros (the C++ library for Windows defines NOMINMAX).
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include "host/OS_Module.h"

#include <string>

OS_ModuleHandle OS_ModuleFromAddress(const void* address) {
    if (address == nullptr) {
        return nullptr;
    }
    HMODULE module = nullptr;
    // The handle is only looked up, not held: the module's reference count stays.
    if (::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                 GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                             static_cast<LPCWSTR>(address), &module) == 0) {
        return nullptr;
    }
    return reinterpret_cast<OS_ModuleHandle>(module);
}

std::string OS_ModulePath(OS_ModuleHandle module) {
    if (module == nullptr) {
        return "";
    }
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            ::GetModuleFileNameW(reinterpret_cast<HMODULE>(const_cast<void*>(module)), path.data(),
                                 static_cast<DWORD>(path.size()));
        if (length == 0) {
            return "";
        }
        if (length < path.size()) {
            path.resize(length);
            break;
        }
        // The name was cut to the buffer: try again with a larger one.
        path.resize(path.size() * 2);
    }
    const int bytes = ::WideCharToMultiByte(CP_UTF8, 0, path.data(), static_cast<int>(path.size()),
                                            nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(bytes), '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, path.data(), static_cast<int>(path.size()), utf8.data(),
                          bytes, nullptr, nullptr);
    return utf8;
}
