#include <gtest/gtest.h>

#include "HostFixture.h"
#include "InfoPal/frame/InfoPal.h"
#include "InfoPal/frame/TabVisibility.h"
#include "InfoPal/panel/QZGPPaletteUI.h"

namespace {

using infopal::InfoPal;
using qzhost::MenuModel;
using qzhost::WorkspaceModel;

class PaletteHostTest : public qztest::HostFixture {
protected:
    void SetUp() override {
        HostFixture::SetUp();
        ASSERT_EQ(Load(), 0);
    }
    InfoPal& Plugin() { return *InfoPal::GetPlugin(); }
    bool PanelOpen() { return WorkspaceModel::Get().Panel("QZGP_Info") != nullptr; }
};

TEST_F(PaletteHostTest, TheCommandTogglesThePanelAndTheCheckMarkFollowsIt) {
    bool handled = false;
    ASSERT_EQ(Command(2028, false, &handled), 0);
    EXPECT_TRUE(handled);
    EXPECT_TRUE(PanelOpen());
    EXPECT_NE(Plugin().GetPanel(), nullptr);
    ASSERT_EQ(UpdateMenu(), 0);
    EXPECT_TRUE(MenuModel::Get().Find(2028)->enabled);
    EXPECT_TRUE(MenuModel::Get().Find(2028)->checked);

    handled = false;
    ASSERT_EQ(Command(2028, false, &handled), 0);
    EXPECT_TRUE(handled);
    EXPECT_FALSE(PanelOpen());
    EXPECT_EQ(Plugin().GetPanel(), nullptr);
    ASSERT_EQ(UpdateMenu(), 0);
    EXPECT_FALSE(MenuModel::Get().Find(2028)->checked);
}

TEST_F(PaletteHostTest, TheCommandAlreadyHandledIsLeftAlone) {
    bool handled = false;
    ASSERT_EQ(Command(2028, true, &handled), 0);
    EXPECT_FALSE(handled);
    EXPECT_FALSE(PanelOpen());
}

TEST_F(PaletteHostTest, AnyOtherCommandIsLeftAlone) {
    for (QZGP_Command command : {0, 2027, 2029, -2028}) {
        bool handled = false;
        ASSERT_EQ(Command(command, false, &handled), 0);
        EXPECT_FALSE(handled) << command;
    }
    EXPECT_FALSE(PanelOpen());
}

TEST_F(PaletteHostTest, AShownTabOutsideAStackedFrameBehindOthersCountsAsNotShown) {
    WorkspaceModel::Get().Open("QZGP_Info");
    WorkspaceModel::Get().SetAnswers("QZGP_Info", /*shown=*/true, /*front=*/false,
                                     /*stacked=*/false);
    EXPECT_FALSE(infopal::IsTabShown("QZGP_Info", true));
    EXPECT_TRUE(infopal::IsTabShown("QZGP_Info", false));
    EXPECT_FALSE(Plugin().PanelIsShown());
    ASSERT_EQ(UpdateMenu(), 0);
    EXPECT_FALSE(MenuModel::Get().Find(2028)->checked);

    WorkspaceModel::Get().SetAnswers("QZGP_Info", true, true, false);
    EXPECT_TRUE(Plugin().PanelIsShown());
    WorkspaceModel::Get().SetAnswers("QZGP_Info", true, false, true);
    EXPECT_TRUE(Plugin().PanelIsShown());
    WorkspaceModel::Get().SetAnswers("QZGP_Info", false, true, true);
    EXPECT_FALSE(infopal::IsTabShown("QZGP_Info", false));
}

TEST_F(PaletteHostTest, APanelCreatedOnDemandIsNullWhenTheWorkspaceCreatesNone) {
    qztest::WorkspaceCreatesNoPanel("QZGP_Info");
    EXPECT_EQ(Plugin().GetPanelCreatingIfNeeded(), nullptr);
}

TEST_F(PaletteHostTest, APanelCreatedOnDemandIsBuiltByTheWorkspace) {
    infopal::QZGPPaletteUI* panel = Plugin().GetPanelCreatingIfNeeded();
    ASSERT_NE(panel, nullptr);
    EXPECT_EQ(panel, Plugin().GetPanel());
    EXPECT_EQ(Plugin().GetPanelCreatingIfNeeded(), panel); // no second toggle
    EXPECT_TRUE(panel->UI_IsPostCreated());
    EXPECT_EQ(panel->GetTabType(), "QZGP_Info");
}

TEST_F(PaletteHostTest, SetPanelShownWithTheCurrentStateDoesNothing) {
    Plugin().SetPanelShown(false);
    EXPECT_FALSE(PanelOpen());
    Plugin().SetPanelShown(true);
    EXPECT_TRUE(PanelOpen());
    auto* panel = Plugin().GetPanel();
    Plugin().SetPanelShown(true);
    EXPECT_EQ(Plugin().GetPanel(), panel); // not toggled away and back
    Plugin().SetPanelShown(false);
    EXPECT_FALSE(PanelOpen());
}

TEST_F(PaletteHostTest, ANewPanelClearsThePluginFlag) {
    Plugin().SetFlag(true);
    Plugin().SetPanelShown(true);
    EXPECT_FALSE(Plugin().GetFlag());
}

TEST_F(PaletteHostTest, ACheckMarkFailureIsDroppedButAnEnableFailureIsReturned) {
    qzhost::HostControls::Get().SetError(qzhost::op::kCheckMenuCommand, 21);
    EXPECT_EQ(UpdateMenu(), 0);
    qzhost::HostControls::Get().SetError(qzhost::op::kEnableCommand, 22);
    EXPECT_EQ(UpdateMenu(), 22);
}

TEST_F(PaletteHostTest, DeathHidesAShownPanel) {
    Plugin().SetPanelShown(true);
    ASSERT_TRUE(PanelOpen());
    ASSERT_EQ(Death(), 0);
    EXPECT_FALSE(PanelOpen());
}

TEST_F(PaletteHostTest, AHiddenPanelOutlivesDeathSafely) {
    Plugin().SetPanelShown(true);
    WorkspaceModel::Get().Hide("QZGP_Info");
    ASSERT_EQ(Death(), 0);
    EXPECT_TRUE(PanelOpen());
    WorkspaceModel::Get().Close("QZGP_Info"); // the panel's teardown finds no plug-in object
    EXPECT_FALSE(PanelOpen());
}

TEST_F(PaletteHostTest, TheMenuNameIsThePanelTitle) {
    EXPECT_STREQ(Plugin().MenuName(), "Info");
    EXPECT_EQ(Plugin().PanelTitle(), u"Info");
}

} // namespace
