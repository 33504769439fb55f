// The menu behind a panel's tab: built afresh by the panel each time, and the chosen
// command handed back inside the host's wrapper.
#include "WorkspaceTestSupport.h"

namespace workspacetest {
namespace {

using qzhost::WorkspaceModel;

using WorkspaceFlyout = WorkspaceTest;

TEST_F(WorkspaceFlyout, WithoutAPanelThereIsNoMenu) {
    const qzhost::FlyoutMenuResult menu = WorkspaceModel::Get().PopulateFlyoutMenu(kTab);
    EXPECT_FALSE(menu.panel);
    EXPECT_TRUE(menu.items.empty());
    EXPECT_FALSE(menu.thrown);
    const qzhost::FlyoutCommandResult command = WorkspaceModel::Get().DoFlyoutMenuCommand(kTab, 10);
    EXPECT_FALSE(command.panel);
    EXPECT_FALSE(command.handled);
    EXPECT_FALSE(command.thrown);
}

TEST_F(WorkspaceFlyout, ThePanelFillsTheMenu) {
    FlyoutPanel* panel = Open();
    ASSERT_NE(panel, nullptr);
    const qzhost::FlyoutMenuResult menu = WorkspaceModel::Get().PopulateFlyoutMenu(kTab);
    EXPECT_TRUE(menu.panel);
    EXPECT_FALSE(menu.thrown);
    ASSERT_EQ(menu.items.size(), 2u);
    EXPECT_EQ(menu.items[0].text, U("First"));
    EXPECT_EQ(menu.items[0].command, 10);
    EXPECT_FALSE(menu.items[0].checked);
    EXPECT_TRUE(menu.items[0].enabled);
    EXPECT_EQ(menu.items[1].text, U("Second"));
    EXPECT_EQ(menu.items[1].command, 11);
    EXPECT_TRUE(menu.items[1].checked);
    EXPECT_EQ(panel->populated, 1);
}

TEST_F(WorkspaceFlyout, EachOpeningStartsFromAnEmptyMenu) {
    FlyoutPanel* panel = Open();
    ASSERT_NE(panel, nullptr);
    std::vector<std::size_t> sizes_seen;
    panel->populate = [&](kitworkspace::workspace::FlyoutMenu& menu) {
        sizes_seen.push_back(menu.GetItems().size());
        menu.AppendItem(U("Only"));
    };
    WorkspaceModel::Get().PopulateFlyoutMenu(kTab);
    const qzhost::FlyoutMenuResult menu = WorkspaceModel::Get().PopulateFlyoutMenu(kTab);
    EXPECT_EQ(sizes_seen, (std::vector<std::size_t>{0, 0}));
    ASSERT_EQ(menu.items.size(), 1u);
}

TEST_F(WorkspaceFlyout, ThePanelsAnswerToACommandIsGivenBack) {
    FlyoutPanel* panel = Open();
    ASSERT_NE(panel, nullptr);
    qzhost::FlyoutCommandResult result = WorkspaceModel::Get().DoFlyoutMenuCommand(kTab, 11);
    EXPECT_TRUE(result.panel);
    EXPECT_TRUE(result.handled);
    EXPECT_FALSE(result.thrown);
    result = WorkspaceModel::Get().DoFlyoutMenuCommand(kTab, 49);
    EXPECT_TRUE(result.panel);
    EXPECT_FALSE(result.handled);
    EXPECT_FALSE(result.thrown);
    EXPECT_EQ(panel->commands, (std::vector<std::int32_t>{11, 49}));
}

TEST_F(WorkspaceFlyout, AnIntegerThrownByTheHandlerIsItsResult) {
    ASSERT_NE(Open(), nullptr);
    const qzhost::FlyoutCommandResult result = WorkspaceModel::Get().DoFlyoutMenuCommand(kTab, 20);
    EXPECT_FALSE(result.handled);
    ASSERT_TRUE(result.thrown);
    EXPECT_EQ(*result.thrown, 27);
    EXPECT_TRUE(qzhost::HostControls::Get().Reported().empty());
}

TEST_F(WorkspaceFlyout, AStandardExceptionIsReportedAndGivesTheReportResult) {
    ASSERT_NE(Open(), nullptr);
    qzhost::HostControls::Get().SetReportResult(64);
    const qzhost::FlyoutCommandResult result = WorkspaceModel::Get().DoFlyoutMenuCommand(kTab, 21);
    EXPECT_FALSE(result.handled);
    ASSERT_TRUE(result.thrown);
    EXPECT_EQ(*result.thrown, 64);
    EXPECT_EQ(qzhost::HostControls::Get().Reported(),
              std::vector<std::string>{"the command failed"});
}

TEST_F(WorkspaceFlyout, AnythingElseThrownGivesTheGenericCode) {
    ASSERT_NE(Open(), nullptr);
    const qzhost::FlyoutCommandResult result = WorkspaceModel::Get().DoFlyoutMenuCommand(kTab, 22);
    EXPECT_FALSE(result.handled);
    ASSERT_TRUE(result.thrown);
    EXPECT_EQ(*result.thrown, QZ_Err_GENERIC);
    EXPECT_TRUE(qzhost::HostControls::Get().Reported().empty());
}

TEST_F(WorkspaceFlyout, AFillingThatThrowsGivesNoItemsAndItsResult) {
    FlyoutPanel* panel = Open();
    ASSERT_NE(panel, nullptr);
    panel->populate = [](kitworkspace::workspace::FlyoutMenu& menu) {
        menu.AppendItem(U("Half"));
        throw QZ_Err{31};
    };
    const qzhost::FlyoutMenuResult menu = WorkspaceModel::Get().PopulateFlyoutMenu(kTab);
    EXPECT_TRUE(menu.panel);
    EXPECT_TRUE(menu.items.empty());
    ASSERT_TRUE(menu.thrown);
    EXPECT_EQ(*menu.thrown, 31);
}

TEST_F(WorkspaceFlyout, AClosedPanelIsNotAsked) {
    ASSERT_NE(Open(), nullptr);
    WorkspaceModel::Get().Close(kTab);
    EXPECT_FALSE(WorkspaceModel::Get().PopulateFlyoutMenu(kTab).panel);
    EXPECT_FALSE(WorkspaceModel::Get().DoFlyoutMenuCommand(kTab, 10).panel);
}

} // namespace
} // namespace workspacetest
