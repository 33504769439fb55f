// The panel base's show and size handling: the became-visible notification, and the
// controls container following the panel's size.
#include <gtest/gtest.h>

#include "../textlines/TextLinesFixture.h"
#include "kitui/controls/UI_Divider.h"
#include "kitworkspace/workspace/TabCreator.h"

namespace {

using kitui::ui::RectT;
using qzhost::WorkspaceModel;
using namespace textlines_test;

/// The Info panel, counting the base's became-visible notifications.
class CountingPanel : public infopal::InfoPal_UI {
public:
    CountingPanel(kitui::ui::UI_Node* parent,
                  const kitworkspace::workspace::TabPanelCreationArgs* args)
        : InfoPal_UI(parent, args, u"Info", 0, true) {}
    int becameVisible = 0;

protected:
    void BecameVisible() override { ++becameVisible; }
};

class CountingPanelCreator : public kitworkspace::workspace::TabCreator {
public:
    CountingPanelCreator() : TabCreator(kTab) {}
    void Create(kitworkspace::workspace::TabPanel** out_panel, kitui::ui::UI_Node* parent,
                const kitworkspace::workspace::TabPanelCreationArgs* args) override {
        auto* panel = new CountingPanel(parent, args);
        *out_panel = panel;
        static_cast<kitui::ui::UI_NodeBase*>(panel)->UI_PostCreate();
    }
};

class PaletteUIShowAndSizeTest : public TextLinesFixture {};

TEST_F(PaletteUIShowAndSizeTest, ShowingAHiddenPanelNotifiesItOnce) {
    WorkspaceModel::Get().RegisterTabCreator(new CountingPanelCreator);
    OpenPanel();
    auto* panel = dynamic_cast<CountingPanel*>(Panel());
    ASSERT_NE(panel, nullptr);
    const int at_start = panel->becameVisible;
    panel->UI_Show(false);
    EXPECT_FALSE(panel->UI_IsVisible());
    EXPECT_EQ(panel->becameVisible, at_start);
    panel->UI_Show(true);
    EXPECT_TRUE(panel->UI_IsVisible());
    EXPECT_EQ(panel->becameVisible, at_start + 1);
    panel->UI_Show(true); // already visible: no news
    EXPECT_EQ(panel->becameVisible, at_start + 1);
}

TEST_F(PaletteUIShowAndSizeTest, APanelInAHiddenFrameIsNotNotifiedWhenShown) {
    WorkspaceModel::Get().RegisterTabCreator(new CountingPanelCreator);
    OpenPanel();
    auto* panel = dynamic_cast<CountingPanel*>(Panel());
    ASSERT_NE(panel, nullptr);
    panel->UI_Show(false);
    WorkspaceModel::Get().Hide(kTab);
    const int before = panel->becameVisible;
    panel->UI_Show(true); // shown, but its frame is not: it has not become visible
    EXPECT_EQ(panel->becameVisible, before);
}

TEST_F(PaletteUIShowAndSizeTest, TheControlsContainerTakesThePanelsNewSize) {
    auto& panel = OpenPanel();
    panel.UI_SetBounds(RectT<float>{0, 0, 250, 140});
    EXPECT_EQ(panel.GetControlsContainer(0)->UI_GetBounds(), (RectT<float>{0, 0, 250, 140}));
    EXPECT_EQ(Row(panel, 0).UI_GetBounds().width, 250.0f);
    EXPECT_EQ(panel.GetControl<kitui::controls::UI_Divider>(0).UI_GetBounds(),
              (RectT<float>{5, 63, 237, 2}));
}

TEST_F(PaletteUIShowAndSizeTest, AnEmptySizeLeavesTheControlsWhereTheyAre) {
    auto& panel = OpenPanel();
    const auto container = panel.GetControlsContainer(0)->UI_GetBounds();
    const auto divider = panel.GetControl<kitui::controls::UI_Divider>(0).UI_GetBounds();
    const auto row = Row(panel, 2).UI_GetBounds();
    for (RectT<float> bounds : {RectT<float>{0, 0, 0, 114}, RectT<float>{0, 0, 206, 0}}) {
        panel.UI_SetBounds(bounds);
        EXPECT_EQ(panel.GetControlsContainer(0)->UI_GetBounds(), container);
        EXPECT_EQ(panel.GetControl<kitui::controls::UI_Divider>(0).UI_GetBounds(), divider);
        EXPECT_EQ(Row(panel, 2).UI_GetBounds(), row);
    }
}

} // namespace
