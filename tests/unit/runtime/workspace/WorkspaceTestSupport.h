// A test panel with a flyout menu of its own, and the creator that opens it as a tab.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>

#include "kitworkspace/workspace/TabCreator.h"
#include "kitworkspace/workspace/TabPanel.h"
#include "qzhost/HostControls.h"
#include "qzhost/MainLoop.h"
#include "qzhost/WorkspaceModel.h"

namespace workspacetest {

inline constexpr const char* kTab = "Test_Tab";

inline kitcore::utility::UTF16String U(const char* text) {
    return kitcore::utility::UTF16String(text, text + std::char_traits<char>::length(text));
}

/// Two items, the second checked; commands 10 and 11 are handled, 20 throws an integer,
/// 21 a std::runtime_error, 22 a value of another type. `populate` replaces the filling.
class FlyoutPanel : public kitworkspace::workspace::TabPanel {
public:
    explicit FlyoutPanel(kitui::ui::UI_Node* parent)
        : TabPanel(kTab, parent, nullptr, U("Test"), 0) {}

    void PopulateFlyoutMenu(kitworkspace::workspace::FlyoutMenu& menu) override {
        ++populated;
        if (populate) {
            populate(menu);
            return;
        }
        menu.RemoveItems(0);
        menu.SetItemCommand(menu.AppendItem(U("First")), 10);
        const std::size_t second = menu.AppendItem(U("Second"));
        menu.SetItemCommand(second, 11);
        menu.SetItemChecked(second, true);
    }

    bool DoFlyoutMenuCommand(std::int32_t command) override {
        commands.push_back(command);
        switch (command) {
        case 10:
        case 11:
            return true;
        case 20:
            throw QZ_Err{27};
        case 21:
            throw std::runtime_error("the command failed");
        case 22:
            throw std::string("neither");
        default:
            return false;
        }
    }

    int populated = 0;
    std::vector<std::int32_t> commands;
    std::function<void(kitworkspace::workspace::FlyoutMenu&)> populate;
};

class FlyoutPanelCreator : public kitworkspace::workspace::TabCreator {
public:
    FlyoutPanelCreator() : TabCreator(kTab) {}
    void Create(kitworkspace::workspace::TabPanel** out_panel, kitui::ui::UI_Node* parent,
                const kitworkspace::workspace::TabPanelCreationArgs*) override {
        *out_panel = new FlyoutPanel(parent);
    }
};

class WorkspaceTest : public ::testing::Test {
protected:
    void SetUp() override {
        qzhost::MainLoop::Get().AdoptCurrentThread();
        qzhost::HostControls::Get().Reset();
        qzhost::WorkspaceModel::Get().Reset();
        qzhost::WorkspaceModel::Get().RegisterTabCreator(new FlyoutPanelCreator());
    }
    void TearDown() override {
        qzhost::WorkspaceModel::Get().Reset();
        qzhost::HostControls::Get().Reset();
    }

    FlyoutPanel* Open() {
        qzhost::WorkspaceModel::Get().Open(kTab);
        return dynamic_cast<FlyoutPanel*>(qzhost::WorkspaceModel::Get().Panel(kTab));
    }
};

} // namespace workspacetest
