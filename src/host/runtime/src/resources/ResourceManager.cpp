// Resource managers: the interface, and the resources of one loaded library, read from
// the library's own file the first time that a resource is asked for.
#include "kitui/utility/ResourceManager.h"

#include <mutex>
#include <optional>
#include <sstream>
#include <stdexcept>

#include "ResourceNames.h"
#include "qzhost/ResourceArchive.h"

namespace kitui::utility {

ResourceManager::~ResourceManager() = default;

using qzhost::resources::ResourceArchive;

struct OS_ResourceManager::Archive {
    std::mutex mutex;
    bool read = false;
    std::string error; // why the module's file could not be read, once read failed
    ResourceArchive resources;

    const ResourceArchive& Get(OS_ModuleHandle module) {
        std::lock_guard lock(mutex);
        if (!read) {
            read = true;
            try {
                const std::string path = OS_ModulePath(module);
                if (path.empty()) {
                    std::ostringstream message;
                    message << "resources: no library file is known for module handle " << module;
                    error = message.str();
                } else {
                    resources = ResourceArchive::FromFile(path);
                }
            } catch (const std::exception& failure) {
                error = std::string("resources: ") + failure.what();
            }
        }
        if (!error.empty()) {
            throw std::runtime_error(error);
        }
        return resources;
    }
};

OS_ResourceManager::OS_ResourceManager(OS_ModuleHandle module)
    : module_(module), archive_(std::make_unique<Archive>()) {}

OS_ResourceManager::~OS_ResourceManager() = default;

bool OS_ResourceManager::GetResourceBytes(const kitcore::utility::UTF16String& name,
                                          const kitcore::utility::UTF16String& type,
                                          std::vector<std::uint8_t>& bytes) const {
    bytes.clear();
    if (module_ == nullptr) {
        return false;
    }
    const std::optional<std::string> asciiName = qzhost::resources::AsciiResourceText(name);
    const std::optional<std::string> asciiType = qzhost::resources::AsciiResourceText(type);
    if (!asciiName || !asciiType) {
        return false;
    }
    const ResourceArchive& resources = archive_->Get(module_);
    const qzhost::resources::ResourceEntry* entry =
        resources.Find(*asciiType, *asciiName, qzhost::resources::kDefaultLanguage);
    if (entry == nullptr) {
        return false;
    }
    const auto data = resources.Data(*entry);
    bytes.assign(data.begin(), data.end());
    return true;
}

} // namespace kitui::utility
