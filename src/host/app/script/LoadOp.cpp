// The "load" op: finds the plug-in through its property list, loads it and calls its
// entry point, the way the application does at its start.
#include <memory>

#include "qzhost/PluginLoader.h"
#include "qzhost/SuiteRegistry.h"
#include "script/OpTable.h"
#include "script/ScriptErrors.h"

namespace qzhost::script {

namespace {

// What the reference host tells the plug-in about itself.
constexpr std::int32_t kHostMajorVersion = 1;
constexpr std::int32_t kHostMinorVersion = 0;
constexpr QZGP_PluginID kPluginId = 1;

constexpr const char* kInfoPaletteSuite = "QZ Info Palette Suite";
constexpr std::int32_t kInfoPaletteSuiteVersion = 2;

Json Load(ScriptSession& session, const OpArgs& args) {
    args.AllowOnly({});
    if (session.Loaded()) {
        throw HostFailure("the plug-in is already loaded");
    }
    std::unique_ptr<LoadedPlugin> plugin;
    try {
        plugin = std::make_unique<LoadedPlugin>(session.PluginPath());
    } catch (const PluginLoadError& error) {
        throw HostFailure(error.what());
    }
    const QZGP_PluginEntryFunc entry = plugin->Entry();
    session.SetPlugin(std::move(plugin));

    QZGP_GlobalRefcon& global = session.Global();
    global = nullptr;
    const QZ_Err result = entry(SuiteRegistry::Get().PluginTable(), kHostMajorVersion,
                                kHostMinorVersion, kPluginId, &global);

    Json out = OpOutput(args);
    out["result"] = result;
    out["global"] = global != nullptr;
    out["suite_published"] =
        SuiteRegistry::Get().IsPublished(kInfoPaletteSuite, kInfoPaletteSuiteVersion);
    return out;
}

} // namespace

void AddLoadOps(OpTable& table) {
    table.Add("load", Load);
}

} // namespace qzhost::script
