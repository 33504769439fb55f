// The default reference host with the Info palette plug-in loaded and its panel open, on
// the calling thread, and the published suite acquired as the host's viewers acquire it.
#pragma once

#include <cstdlib>

#include "HostReset.h"
#include "InfoPal/frame/InfoPal.h"
#include "InfoPal/panel/InfoPal_UI.h"
#include "qzgp/QZ_InfoPaletteSuite.h"
#include "qzhost/SuiteRegistry.h"

extern "C" QZ_Err GPMain_InfoPal(QZ_BasicSuiteTable* basic, std::int32_t major, std::int32_t minor,
                                 QZGP_PluginID plugin_id, QZGP_GlobalRefcon* global_ref);

namespace qzbench {

class LoadedHost {
public:
    LoadedHost() {
        qztest::ResetHost();
        if (GPMain_InfoPal(qzhost::SuiteRegistry::Get().PluginTable(), 1, 0, 42, &global_) != 0) {
            std::abort();
        }
        qzhost::WorkspaceModel::Get().Open("QZGP_Info");
        panel_ = dynamic_cast<infopal::InfoPal_UI*>(infopal::InfoPal::GetPlugin()->GetPanel());
        const void* table = nullptr;
        if (panel_ == nullptr ||
            qzhost::SuiteRegistry::Get().Acquire(qzhost::Acquirer::Host, kQZ_InfoPaletteSuite,
                                                 kQZ_InfoPaletteSuiteVersion2, &table) != 0) {
            std::abort();
        }
        suite_ = static_cast<const QZ_InfoPaletteSuite2*>(table);
    }

    ~LoadedHost() {
        // Calls still queued by a benchmark's workers are dropped, not run.
        qzhost::MainLoop::Get().AdoptCurrentThread();
        qzhost::MainLoop::Get().Discard();
        qzhost::SuiteRegistry::Get().Release(qzhost::Acquirer::Host, kQZ_InfoPaletteSuite,
                                             kQZ_InfoPaletteSuiteVersion2);
        auto& hooks = qzhost::HookRegistry::Get().Hooks();
        if (hooks.death != nullptr) {
            (void)hooks.death(global_, hooks.deathRefcon);
        }
        qzhost::HookRegistry::Get().Clear();
        qzhost::WorkspaceModel::Get().Reset();
        qzhost::HostControls::Get().Reset();
    }
    LoadedHost(const LoadedHost&) = delete;
    LoadedHost& operator=(const LoadedHost&) = delete;

    infopal::InfoPal_UI& Panel() { return *panel_; }
    const QZ_InfoPaletteSuite2& Suite() const { return *suite_; }

private:
    QZGP_GlobalRefcon global_ = nullptr;
    infopal::InfoPal_UI* panel_ = nullptr;
    const QZ_InfoPaletteSuite2* suite_ = nullptr;
};

} // namespace qzbench
