// Resource managers on Windows: the resources of a loaded module are its PE resources,
// which the loader maps with the module; they are found and read through the module
// handle. A module loaded only as a resource file (LOAD_LIBRARY_AS_DATAFILE,
// LOAD_LIBRARY_AS_IMAGE_RESOURCE) is read the same way.
// Lean, and without the min and max macros (the C++ library for Windows defines NOMINMAX).
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include "kitui/utility/ResourceManager.h"

#include <optional>
#include <string>

#include "qzhost/ResourceArchive.h"
#include "resources/ResourceNames.h"

namespace kitui::utility {

ResourceManager::~ResourceManager() = default;

// Nothing to keep between reads: the loader has the resources mapped already, so no
// archive is ever made.
struct OS_ResourceManager::Archive {};

namespace {

// A resource type or name as the loader asks for it: a number (the resource script wrote a
// decimal name as one), or the text. The loader compares texts without regard to case: the
// resource compiler stores them in capitals, and the loader folds what it is asked.
// Types and names are ASCII; a text with any other character names nothing.
class ResourceId {
public:
    static std::optional<ResourceId> From(const kitcore::utility::UTF16String& text) {
        const std::optional<std::string> ascii = qzhost::resources::AsciiResourceText(text);
        if (!ascii) {
            return std::nullopt;
        }
        ResourceId id;
        id.text_.assign(ascii->begin(), ascii->end());
        id.number_ = qzhost::resources::ResourceNumber(*ascii);
        return id;
    }
    LPCWSTR Get() const noexcept { return number_ ? MAKEINTRESOURCEW(*number_) : text_.c_str(); }

private:
    std::wstring text_;
    std::optional<std::uint16_t> number_;
};

} // namespace

OS_ResourceManager::OS_ResourceManager(OS_ModuleHandle module) : module_(module) {}

OS_ResourceManager::~OS_ResourceManager() = default;

bool OS_ResourceManager::GetResourceBytes(const kitcore::utility::UTF16String& name,
                                          const kitcore::utility::UTF16String& type,
                                          std::vector<std::uint8_t>& bytes) const {
    bytes.clear();
    if (module_ == nullptr || name.empty() || type.empty()) {
        return false;
    }
    const HMODULE module = reinterpret_cast<HMODULE>(const_cast<void*>(module_));
    const std::optional<ResourceId> resourceName = ResourceId::From(name);
    const std::optional<ResourceId> resourceType = ResourceId::From(type);
    if (!resourceName || !resourceType) {
        return false;
    }
    // The library's own language first, then whichever language the module has.
    HRSRC found = ::FindResourceExW(module, resourceType->Get(), resourceName->Get(),
                                    static_cast<WORD>(qzhost::resources::kDefaultLanguage));
    if (found == nullptr) {
        found = ::FindResourceW(module, resourceName->Get(), resourceType->Get());
    }
    if (found == nullptr) {
        return false;
    }
    const DWORD size = ::SizeofResource(module, found);
    const HGLOBAL loaded = ::LoadResource(module, found);
    const void* data = loaded != nullptr ? ::LockResource(loaded) : nullptr;
    if (data == nullptr && size != 0) {
        return false;
    }
    const auto* first = static_cast<const std::uint8_t*>(data);
    bytes.assign(first, first + size);
    return true;
}

} // namespace kitui::utility
