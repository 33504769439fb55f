// Access to the resources that a library carries in its own file.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "host/OS_Module.h"
#include "kitcore/utility/UTF16String.h"

namespace kitui::utility {

class QZ_HOST_API ResourceManager {
public:
    virtual ~ResourceManager();
    /// [ui-thread] The bytes of the resource of `type` named `name` (both matched
    /// without regard to case). Returns false and leaves `bytes` empty when there is no
    /// such resource.
    virtual bool GetResourceBytes(const kitcore::utility::UTF16String& name,
                                  const kitcore::utility::UTF16String& type,
                                  std::vector<std::uint8_t>& bytes) const = 0;
};

/// The resources of one loaded library, read from its file the first time that one is
/// asked for. GetResourceBytes throws std::runtime_error when that file cannot be read or
/// its resources are corrupt (every call after such a failure throws the same error).
class QZ_HOST_API OS_ResourceManager : public ResourceManager {
public:
    explicit OS_ResourceManager(OS_ModuleHandle module);
    ~OS_ResourceManager() override;
    bool GetResourceBytes(const kitcore::utility::UTF16String& name,
                          const kitcore::utility::UTF16String& type,
                          std::vector<std::uint8_t>& bytes) const override;
    OS_ModuleHandle GetModule() const noexcept { return module_; }

private:
    struct Archive;
    OS_ModuleHandle module_;
    std::unique_ptr<Archive> archive_;
};

} // namespace kitui::utility
