// A fresh reference host for each test, and the plug-in's entry and hooks called the way
// the host calls them.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "HostReset.h"
#include "kitworkspace/workspace/TabCreator.h"
#include "qzgp/QZGP_RegisterSuite.h"
#include "qzhost/HookRegistry.h"
#include "qzhost/HostControls.h"
#include "qzhost/MainLoop.h"
#include "qzhost/MenuModel.h"
#include "qzhost/SuiteRegistry.h"
#include "qzhost/WorkspaceModel.h"

extern "C" QZ_Err GPMain_InfoPal(QZ_BasicSuiteTable* basic, std::int32_t major, std::int32_t minor,
                                 QZGP_PluginID plugin_id, QZGP_GlobalRefcon* global_ref);

namespace qztest {

/// The tab type of the Info panel.
inline constexpr const char* kInfoTab = "QZGP_Info";

/// A tab creator that builds no panel: the workspace of a host that cannot make one.
class CreatorOfNoPanel : public kitworkspace::workspace::TabCreator {
public:
    explicit CreatorOfNoPanel(const char* tab_type) : TabCreator(tab_type) {}
    void Create(kitworkspace::workspace::TabPanel** out_panel, kitui::ui::UI_Node*,
                const kitworkspace::workspace::TabPanelCreationArgs*) override {
        *out_panel = nullptr;
    }
};

/// Puts a creator of no panel in place of the creator of `tab_type`.
inline void WorkspaceCreatesNoPanel(const char* tab_type) {
    qzhost::WorkspaceModel::Get().UnregisterTabCreator(tab_type);
    qzhost::WorkspaceModel::Get().RegisterTabCreator(new CreatorOfNoPanel(tab_type));
}

inline constexpr QZGP_PluginID kPluginID = 42;

class HostFixture : public ::testing::Test {
protected:
    void SetUp() override { ResetHost(); }

    void TearDown() override {
        Death();
        qzhost::WorkspaceModel::Get().Reset();
        qzhost::MainLoop::Get().Discard();
        // Whatever a test did, the plug-in gave back every suite it took, and kept to the
        // host's calling contract (no [ui-thread] operation called from another thread).
        EXPECT_TRUE(qzhost::SuiteRegistry::Get().Held(qzhost::Acquirer::Plugin).empty());
        if (expectViolations_) {
            EXPECT_FALSE(qzhost::HostControls::Get().Violations().empty())
                << "the test expected the host to record a contract violation";
        } else {
            EXPECT_EQ(qzhost::HostControls::Get().Violations(), std::vector<std::string>())
                << "the host recorded contract violations during the test";
        }
        qzhost::HostControls::Get().Reset();
    }

    /// Calls the entry as the host does; `global_` receives the plug-in object.
    QZ_Err Load() {
        return GPMain_InfoPal(qzhost::SuiteRegistry::Get().PluginTable(), 1, 0, kPluginID,
                              &global_);
    }

    /// Runs the death hook once, if it was registered and the plug-in object exists.
    QZ_Err Death() {
        auto& hooks = qzhost::HookRegistry::Get().Hooks();
        if (hooks.death == nullptr || global_ == nullptr) {
            return 0;
        }
        const QZ_Err err = hooks.death(global_, hooks.deathRefcon);
        qzhost::HookRegistry::Get().Clear();
        global_ = nullptr;
        return err;
    }

    QZ_Err Command(QZGP_Command command, bool already_handled, bool* handled) {
        auto& hooks = qzhost::HookRegistry::Get().Hooks();
        return hooks.command(global_, hooks.commandRefcon, command, hooks.commandPriority,
                             already_handled, handled);
    }

    QZ_Err UpdateMenu() {
        auto& hooks = qzhost::HookRegistry::Get().Hooks();
        return hooks.updateMenu(global_, hooks.updateMenuRefcon, 0);
    }

    std::vector<std::string> Held() const {
        return qzhost::SuiteRegistry::Get().Held(qzhost::Acquirer::Plugin);
    }

    QZGP_GlobalRefcon global_ = nullptr;
    /// Set by a test that breaks the host's calling contract on purpose.
    bool expectViolations_ = false;
};

} // namespace qztest
