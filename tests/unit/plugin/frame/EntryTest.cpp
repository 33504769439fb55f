#include <gtest/gtest.h>

#include "HostFixture.h"
#include "InfoPal/frame/HostSuiteCache.h"
#include "InfoPal/frame/InfoPal.h"

namespace {

using qzhost::HookRegistry;
using qzhost::HostControls;
using qzhost::MenuModel;
using qzhost::SuiteRegistry;
using qzhost::WorkspaceModel;

class EntryTest : public qztest::HostFixture {};

TEST_F(EntryTest, ANormalStartRegistersHooksTabCreatorAndMenuCommand) {
    ASSERT_EQ(Load(), 0);
    ASSERT_NE(global_, nullptr);
    EXPECT_EQ(infopal::InfoPal::GetPlugin(),
              reinterpret_cast<infopal::InfoPal*>(infopal::FromGlobalRefcon(global_)));
    EXPECT_TRUE(SuiteRegistry::Get().IsPublished("QZ Info Palette Suite", 2));
    const auto& hooks = HookRegistry::Get().Hooks();
    EXPECT_NE(hooks.command, nullptr);
    EXPECT_NE(hooks.updateMenu, nullptr);
    EXPECT_NE(hooks.death, nullptr);
    EXPECT_NE(hooks.idle, nullptr);
    EXPECT_EQ(hooks.plugin, qztest::kPluginID);
    EXPECT_EQ(hooks.commandPriority, 1);
    EXPECT_EQ(WorkspaceModel::Get().CreatorTypes(), std::vector<std::string>{"QZGP_Info"});
    const auto item = MenuModel::Get().Find(2028);
    ASSERT_TRUE(item.has_value());
    EXPECT_EQ(item->text, "Info");
    EXPECT_EQ(item->menu, 8);
    EXPECT_EQ(item->position, -2);
    EXPECT_EQ(Held(), (std::vector<std::string>{"QZGP Command Suite/1", "QZGP Register Suite/6",
                                                "QZGP Utility Suite/13"}));
}

TEST_F(EntryTest, UISuppressedByteOneLeavesOnlyTheSuite) {
    HostControls::Get().SetUISuppressed(1);
    auto* sentinel = reinterpret_cast<QZGP_GlobalRefcon>(&global_);
    global_ = sentinel;
    EXPECT_EQ(Load(), 0);
    EXPECT_EQ(global_, sentinel); // untouched
    global_ = nullptr;
    EXPECT_EQ(infopal::InfoPal::GetPlugin(), nullptr);
    EXPECT_TRUE(SuiteRegistry::Get().IsPublished("QZ Info Palette Suite", 2));
    EXPECT_EQ(HookRegistry::Get().Hooks().command, nullptr);
    EXPECT_TRUE(MenuModel::Get().Items().empty());
    EXPECT_TRUE(Held().empty());
}

TEST_F(EntryTest, AnyOtherUISuppressedByteStartsNormally) {
    for (std::uint8_t byte : {std::uint8_t{2}, std::uint8_t{255}}) {
        HostControls::Get().SetUISuppressed(byte);
        ASSERT_EQ(Load(), 0) << int(byte);
        EXPECT_NE(global_, nullptr);
        EXPECT_EQ(Death(), 0);
        MenuModel::Get().Reset();
    }
}

TEST_F(EntryTest, AMissingRegisterSuiteGivesThirteenAndNoPluginObject) {
    HostControls::Get().SetMissingSuites({{"QZGP Register Suite", 6}});
    EXPECT_EQ(Load(), 13);
    EXPECT_EQ(global_, nullptr);
    EXPECT_EQ(infopal::InfoPal::GetPlugin(), nullptr);
    EXPECT_TRUE(Held().empty());
}

TEST_F(EntryTest, AMissingCommandSuiteReleasesTheRegisterSuite) {
    HostControls::Get().SetMissingSuites({{"QZGP Command Suite", 1}});
    EXPECT_EQ(Load(), 13);
    EXPECT_EQ(global_, nullptr);
    EXPECT_TRUE(Held().empty());
}

TEST_F(EntryTest, AFailedHookRegistrationReturnsTheHostCodeAndGivesEverythingBack) {
    HostControls::Get().SetError(qzhost::op::kRegisterIdleHook, 31);
    EXPECT_EQ(Load(), 31);
    EXPECT_EQ(global_, nullptr);
    EXPECT_EQ(infopal::InfoPal::GetPlugin(), nullptr);
    EXPECT_EQ(infopal::GetHostSuiteCache(), nullptr);
    EXPECT_TRUE(Held().empty());
}

TEST_F(EntryTest, AFailedMenuInsertionUnregistersTheTabCreator) {
    HostControls::Get().SetError(qzhost::op::kInsertMenuCommand, 9);
    EXPECT_EQ(Load(), 9);
    EXPECT_EQ(infopal::InfoPal::GetPlugin(), nullptr);
    EXPECT_TRUE(WorkspaceModel::Get().CreatorTypes().empty());
    EXPECT_TRUE(Held().empty());
}

TEST_F(EntryTest, AStringLookupThatThrowsIsReportedThroughTheHost) {
    HostControls::Get().SetThrow(qzhost::op::kStringLookup, "no strings today");
    HostControls::Get().SetReportResult(55);
    EXPECT_EQ(Load(), 55);
    EXPECT_EQ(HostControls::Get().Reported(), std::vector<std::string>{"no strings today"});
    EXPECT_EQ(global_, nullptr);
    EXPECT_TRUE(Held().empty());
}

TEST_F(EntryTest, HooksCalledWithANullGlobalReferenceReturnZero) {
    ASSERT_EQ(Load(), 0);
    const auto hooks = HookRegistry::Get().Hooks();
    bool handled = false;
    EXPECT_EQ(hooks.command(nullptr, nullptr, 2028, 1, false, &handled), 0);
    EXPECT_FALSE(handled);
    EXPECT_EQ(hooks.updateMenu(nullptr, nullptr, 0), 0);
    EXPECT_EQ(hooks.idle(nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(hooks.death(nullptr, nullptr), 0);
    EXPECT_NE(infopal::InfoPal::GetPlugin(), nullptr); // nothing was torn down
}

TEST_F(EntryTest, DeathReleasesEverySuiteAndUnregistersTheTabCreator) {
    ASSERT_EQ(Load(), 0);
    EXPECT_EQ(Death(), 0);
    EXPECT_TRUE(Held().empty());
    EXPECT_EQ(infopal::InfoPal::GetPlugin(), nullptr);
    EXPECT_EQ(infopal::GetHostSuiteCache(), nullptr);
    EXPECT_TRUE(WorkspaceModel::Get().CreatorTypes().empty());
    EXPECT_EQ(SuiteRegistry::Get().UnmatchedReleases(qzhost::Acquirer::Plugin), 0);
    // The suite stays published and finds no plug-in object.
    EXPECT_TRUE(SuiteRegistry::Get().IsPublished("QZ Info Palette Suite", 2));
}

TEST_F(EntryTest, ASecondEntryDoesNotPublishTheSuiteAgain) {
    ASSERT_EQ(Load(), 0);
    ASSERT_EQ(Death(), 0);
    MenuModel::Get().Reset(); // the host's menu keeps the first object's command
    HostControls::Get().SetError(qzhost::op::kAddSuite, 99); // would fail a second attempt
    EXPECT_EQ(Load(), 0);
}

TEST_F(EntryTest, WithoutAWorkspaceTheMenuItemIsStillInserted) {
    HostControls::Get().SetWorkspaceExists(false);
    ASSERT_EQ(Load(), 0);
    EXPECT_TRUE(WorkspaceModel::Get().CreatorTypes().empty());
    EXPECT_TRUE(MenuModel::Get().Find(2028).has_value());
    bool handled = false;
    EXPECT_EQ(Command(2028, false, &handled), 0);
    EXPECT_TRUE(handled);
    EXPECT_EQ(WorkspaceModel::Get().Panel("QZGP_Info"), nullptr);
}

} // namespace
