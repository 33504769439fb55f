// Finding and starting a plug-in library the way the host application does: read its
// property list from the file, check its kind, load it, look up its entry point by the
// name that the property list gives, and call it.
#pragma once

#include <stdexcept>
#include <string>

#include "qzgp/QZ_Basic.h"
#include "qzhost/PropertyList.h"

namespace qzhost {

/// A failure of the host itself while finding or loading a plug-in (no property list,
/// wrong kind, no entry point): the message is one clear line.
class QZ_HOST_API PluginLoadError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct PluginInfo {
    PropertyList properties;
    std::string kind;       // "QZgx" for a general plug-in
    std::string entryPoint; // from the "8664" property
};

/// Reads and checks the property list of the library at `path` without loading it.
/// Throws PluginLoadError.
QZ_HOST_API PluginInfo ReadPluginInfo(const std::string& path);

class QZ_HOST_API LoadedPlugin {
public:
    /// Loads the library at `path` and looks up its entry point; throws PluginLoadError.
    explicit LoadedPlugin(const std::string& path);
    ~LoadedPlugin();
    LoadedPlugin(const LoadedPlugin&) = delete;
    LoadedPlugin& operator=(const LoadedPlugin&) = delete;

    const PluginInfo& Info() const noexcept { return info_; }
    QZGP_PluginEntryFunc Entry() const noexcept { return entry_; }

private:
    PluginInfo info_;
    void* handle_ = nullptr;
    QZGP_PluginEntryFunc entry_ = nullptr;
};

/// The folder of the running executable, or "" when it cannot be told: the build and the
/// installation keep the plug-in, the image reader module and the samples beside it.
QZ_HOST_API std::string ProgramFolder();

/// The Info palette library of this build: beside the running executable.
QZ_HOST_API std::string DefaultPluginPath();

} // namespace qzhost
