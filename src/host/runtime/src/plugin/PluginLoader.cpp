// Finding and loading a plug-in library: its property list is read from the file before
// any of its code is loaded, and the entry point is looked up by the name that the
// property list gives.

#include "qzhost/PluginLoader.h"

#include <dlfcn.h>

#include <cstring>
#include <filesystem>
#include <system_error>

#include "qzhost/ResourceArchive.h"

namespace qzhost {

namespace {

constexpr const char* kPropertyListType = "PRPL";
constexpr const char* kPropertyListName = "16000";
constexpr std::uint16_t kPropertyListFormat = 1;
constexpr const char* kGeneralPluginKind = "QZgx";
constexpr const char* kEntryPointKey = "8664";

std::string Printable(const std::string& text) {
    std::string out;
    for (const char c : text) {
        const auto u = static_cast<unsigned char>(c);
        if (u >= 0x20 && u < 0x7F) {
            out += c;
        } else {
            static const char* const digits = "0123456789ABCDEF";
            out += "\\x";
            out += digits[u >> 4];
            out += digits[u & 0xF];
        }
    }
    return out;
}

PluginLoadError Failure(const std::string& path, const std::string& reason) {
    return PluginLoadError("plug-in file '" + path + "': " + reason);
}

} // namespace

PluginInfo ReadPluginInfo(const std::string& path) {
    resources::ResourceArchive archive;
    try {
        archive = resources::ResourceArchive::FromFile(path);
    } catch (const resources::ResourceFormatError& error) {
        throw Failure(path, error.Reason());
    }
    const resources::ResourceEntry* entry =
        archive.Find(kPropertyListType, kPropertyListName, resources::kDefaultLanguage);
    if (entry == nullptr) {
        throw Failure(path, "no property list (PRPL 16000)");
    }

    PluginInfo info;
    try {
        info.properties = DecodePropertyList(archive.Data(*entry));
    } catch (const std::runtime_error& error) {
        throw Failure(path, std::string("PRPL 16000: ") + error.what());
    }
    if (info.properties.formatVersion != kPropertyListFormat) {
        throw Failure(path, "property list format version " +
                                std::to_string(info.properties.formatVersion) +
                                " is not supported (expected 1)");
    }

    const Property* kind = info.properties.Find("kind");
    if (kind == nullptr) {
        throw Failure(path, "the property list has no kind property");
    }
    if (kind->data.size() != 4) {
        throw Failure(path, "the kind property holds " + std::to_string(kind->data.size()) +
                                " bytes, not one four-character code");
    }
    // Four-character codes are stored with their bytes reversed.
    info.kind.assign(kind->data.rbegin(), kind->data.rend());
    if (info.kind != kGeneralPluginKind) {
        throw Failure(path, "kind '" + Printable(info.kind) + "' is not a general plug-in (" +
                                kGeneralPluginKind + ")");
    }

    const Property* entryPoint = info.properties.Find(kEntryPointKey);
    if (entryPoint == nullptr) {
        throw Failure(path, "the property list names no entry point (no 8664 property)");
    }
    const auto* begin = reinterpret_cast<const char*>(entryPoint->data.data());
    const void* end = std::memchr(begin, '\0', entryPoint->data.size());
    if (end == nullptr) {
        throw Failure(path, "the entry-point name in the 8664 property is not NUL-terminated");
    }
    info.entryPoint.assign(begin, static_cast<const char*>(end));
    if (info.entryPoint.empty()) {
        throw Failure(path, "the entry-point name in the 8664 property is empty");
    }
    return info;
}

LoadedPlugin::LoadedPlugin(const std::string& path) : info_(ReadPluginInfo(path)) {
    // A name without a slash would be looked up on the library search path.
    const std::string file = path.find('/') == std::string::npos ? "./" + path : path;
    handle_ = ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle_ == nullptr) {
        const char* message = ::dlerror();
        throw Failure(path, std::string("cannot load: ") + (message != nullptr ? message : "?"));
    }
    ::dlerror();
    void* symbol = ::dlsym(handle_, info_.entryPoint.c_str());
    if (symbol == nullptr) {
        ::dlclose(handle_);
        handle_ = nullptr;
        throw Failure(path, "the library has no entry point '" + Printable(info_.entryPoint) +
                                "' (named by its 8664 property)");
    }
    static_assert(sizeof(symbol) == sizeof(entry_));
    std::memcpy(&entry_, &symbol, sizeof entry_);
}

LoadedPlugin::~LoadedPlugin() {
    if (handle_ != nullptr) {
        ::dlclose(handle_);
    }
}

std::string ProgramFolder() {
    std::error_code error;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::string() : self.parent_path().string();
}

std::string DefaultPluginPath() {
    const std::string folder = ProgramFolder();
    return folder.empty() ? "InfoPal.so" : (std::filesystem::path(folder) / "InfoPal.so").string();
}

} // namespace qzhost
