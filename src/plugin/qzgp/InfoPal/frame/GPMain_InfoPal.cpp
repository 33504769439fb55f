// The plug-in's one entry point.
#include <memory>

#include "InfoPal/frame/HostCallGuard.h"
#include "InfoPal/frame/HostSuiteCache.h"
#include "InfoPal/frame/InfoPal.h"
#include "InfoPal/suite/InfoPalSuite.h"
#include "qzgp/QZGP_UtilitySuite.h"

namespace {

// Asks the host, through the "QZGP Utility Suite" version 7, whether it runs without its
// interactive user interface. The acquire is not checked: a host without the suite
// answers "not suppressed".
std::uint8_t QueryUISuppressed(QZ_BasicSuiteTable* basic) {
    std::uint8_t suppressed = 0;
    if (basic == nullptr || basic->AcquireSuite == nullptr) {
        return suppressed;
    }
    const void* table = nullptr;
    (void)basic->AcquireSuite(kQZGP_UtilitySuite, kQZGP_UtilitySuiteVersion7, &table);
    if (table == nullptr) {
        return suppressed;
    }
    const auto* utility = static_cast<const QZGP_UtilitySuite7*>(table);
    if (utility->GetUISuppressed != nullptr) {
        (void)utility->GetUISuppressed(&suppressed);
    }
    if (basic->ReleaseSuite != nullptr) {
        basic->ReleaseSuite(kQZGP_UtilitySuite, kQZGP_UtilitySuiteVersion7);
    }
    return suppressed;
}

} // namespace

/// [ui-thread] Publishes the Info palette suite, then, unless the host's user interface is
/// suppressed, builds the plug-in object and hands its address back through `global_ref`.
extern "C" QZ_PLUGIN_EXPORT QZ_Err GPMain_InfoPal(QZ_BasicSuiteTable* basic, std::int32_t,
                                                  std::int32_t, QZGP_PluginID plugin_id,
                                                  QZGP_GlobalRefcon* global_ref) {
    return infopal::GuardHostCall([&] {
        infopal::PublishInfoPalSuite();
        if (QueryUISuppressed(basic) == 1) {
            return; // the plug-in lives on only as its suite
        }
        if (global_ref == nullptr) {
            throw QZ_Err_NULL_ARGUMENT;
        }
        *global_ref = nullptr;
        std::unique_ptr<infopal::InfoPal> plugin;
        try {
            plugin = std::make_unique<infopal::InfoPal>(basic, plugin_id);
        } catch (...) {
            // A plug-in object that failed to come up leaves no suite held: the cache that
            // its frame set up goes with it.
            infopal::TearDownHostSuiteCache();
            throw;
        }
        *global_ref = infopal::ToGlobalRefcon(plugin.release());
    });
}
