// The state of one host script run: the plug-in library (once loaded), the global
// reference that its entry handed back, and the host's shutdown at the end of the run.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "qzgp/QZ_Basic.h"
#include "qzhost/PluginLoader.h"

namespace qzhost::script {

/// The tab type under which the Info panel registers its tab creator.
inline constexpr const char* kInfoTabType = "QZGP_Info";

class ScriptSession {
public:
    /// Puts the host into its default state.
    explicit ScriptSession(std::string plugin_path);
    /// Shuts the host down (see Shutdown).
    ~ScriptSession();
    ScriptSession(const ScriptSession&) = delete;
    ScriptSession& operator=(const ScriptSession&) = delete;

    const std::string& PluginPath() const noexcept { return pluginPath_; }

    bool Loaded() const noexcept { return plugin_ != nullptr; }
    /// Keeps the loaded library until shutdown.
    void SetPlugin(std::unique_ptr<LoadedPlugin> plugin) { plugin_ = std::move(plugin); }

    /// The global reference that the entry point wrote; the host hands it to every hook.
    QZGP_GlobalRefcon& Global() noexcept { return global_; }

    /// Keeps `values` until the host shuts down: what the pointers of a call point to,
    /// since a call queued to the main thread keeps them.
    void Keep(std::shared_ptr<void> values) { kept_.push_back(std::move(values)); }

    /// Lets the plug-in go the way the application does before it closes a library: calls
    /// the death hook if it is still registered, forgets the hooks, drops calls queued to
    /// the main thread (and what they point to), destroys the workspace's panels and tab
    /// creators, withdraws the suites that were published and the menu commands that were
    /// inserted, and closes the library, so that a new load may follow. Returns the death
    /// hook's result when it ran. What the death hook lets escape is thrown once the rest
    /// is done. Does nothing but return nullopt when no library is loaded.
    std::optional<QZ_Err> Unload();

    /// Goes down like the application quitting: Unload, with whatever the death hook
    /// lets escape written to standard error. Produces no output; runs once.
    void Shutdown() noexcept;

private:
    std::string pluginPath_;
    std::unique_ptr<LoadedPlugin> plugin_;
    QZGP_GlobalRefcon global_ = nullptr;
    bool shutDown_ = false;
    std::vector<std::shared_ptr<void>> kept_;
};

} // namespace qzhost::script
