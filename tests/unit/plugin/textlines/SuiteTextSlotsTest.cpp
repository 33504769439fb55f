#include <gtest/gtest.h>

#include <stdexcept>

#include "SubstitutePanel.h"
#include "TextLinesFixture.h"

namespace {

using infopal::TextLinesType;
using qzhost::HostControls;
using qzhost::WorkspaceModel;
using namespace textlines_test;

class SuiteTextSlotsTest : public TextLinesFixture {
protected:
    /// Calls every text slot (0, 1, 2, 22, 23) with non-empty text; each must return 0.
    void CallEveryTextSlot() {
        const char16_t* w = u"w";
        EXPECT_EQ(Suite().SetFirstLineSuffix("s"), 0);
        EXPECT_EQ(Suite().SetTextLines3("a", "b", "c"), 0);
        EXPECT_EQ(Suite().SetTextLines5("a", "b", "c", "d", "e"), 0);
        EXPECT_EQ(Suite().SetTextLines3W(w, w, w), 0);
        EXPECT_EQ(Suite().SetTextLines5W(w, w, w, w, w), 0);
    }
};

TEST_F(SuiteTextSlotsTest, ThreeNullLinesGiveEmptyLinesOfTheThreeLineType) {
    auto& panel = OpenPanel();
    ASSERT_EQ(Suite().SetTextLines5("1", "2", "3", "4", "5"), 0);
    ASSERT_EQ(Type(panel), 1U);
    EXPECT_EQ(Suite().SetTextLines3(nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(Type(panel), 0U);
    EXPECT_EQ(Lines(panel), (Lines5{"", "", "", "", ""}));
    EXPECT_EQ(Rows(panel), (Rows3{"", "", ""}));
}

TEST_F(SuiteTextSlotsTest, FiveNullLinesGiveEmptyLinesOfTheFiveLineType) {
    auto& panel = OpenPanel();
    ASSERT_EQ(Suite().SetTextLines3("1", "2", "3"), 0);
    EXPECT_EQ(Suite().SetTextLines5(nullptr, nullptr, nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(Type(panel), 1U);
    EXPECT_EQ(Lines(panel), (Lines5{"", "", "", "", ""}));
    EXPECT_EQ(Rows(panel), (Rows3{"", " ", " "})); // the joining spaces remain
}

TEST_F(SuiteTextSlotsTest, NullWideLinesGiveEmptyLinesOfTheirType) {
    auto& panel = OpenPanel();
    EXPECT_EQ(Suite().SetTextLines5W(nullptr, nullptr, nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(Type(panel), 1U);
    EXPECT_EQ(Lines(panel), (Lines5{"", "", "", "", ""}));
    EXPECT_EQ(Suite().SetTextLines3W(nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(Type(panel), 0U);
    EXPECT_EQ(Rows(panel), (Rows3{"", "", ""}));
}

TEST_F(SuiteTextSlotsTest, OnTheUIThreadTextIsShownAtOnce) {
    auto& panel = OpenPanel();
    EXPECT_EQ(Suite().SetTextLines3("one", "two", "three"), 0);
    EXPECT_EQ(Rows(panel), (Rows3{"one", "two", "three"}));
    EXPECT_EQ(qzhost::MainLoop::Get().Pending(), 0U);
    EXPECT_EQ(Suite().SetTextLines5W(u"a", u"b", u"c", u"d", u"e"), 0);
    EXPECT_EQ(Rows(panel), (Rows3{"a", "b c", "d e"}));
}

TEST_F(SuiteTextSlotsTest, EveryTextSlotReturnsZeroAndChangesNothingWithoutAPanel) {
    CallEveryTextSlot();
    EXPECT_EQ(Panel(), nullptr);
    EXPECT_EQ(WorkspaceModel::Get().Panel(kTab), nullptr); // no panel made on the way
}

TEST_F(SuiteTextSlotsTest, EveryTextSlotReturnsZeroAndChangesNothingWhileThePanelIsHidden) {
    auto& panel = OpenPanel();
    ASSERT_EQ(Suite().SetTextLines3("kept", "", ""), 0);
    WorkspaceModel::Get().Hide(kTab);
    CallEveryTextSlot();
    EXPECT_EQ(Lines(panel), (Lines5{"kept", "", "", "", ""}));
    EXPECT_FALSE(panel.HasPendingTextUpdate());
    WorkspaceModel::Get().Show(kTab);
    EXPECT_EQ(Rows(panel), (Rows3{"kept", "", ""}));
    // No suffix was stored while hidden.
    ASSERT_EQ(Suite().SetTextLines3("next", "", ""), 0);
    EXPECT_EQ(Rows(panel)[0], "next");
}

TEST_F(SuiteTextSlotsTest, EveryTextSlotReturnsZeroWithoutAPluginObject) {
    OpenPanel();
    ASSERT_EQ(Death(), 0); // the shown panel goes with the plug-in object
    ASSERT_EQ(infopal::InfoPal::GetPlugin(), nullptr);
    CallEveryTextSlot();
    EXPECT_EQ(WorkspaceModel::Get().Panel(kTab), nullptr);
}

TEST_F(SuiteTextSlotsTest, TextSentWhileHiddenIsLostAlsoAfterThePanelIsShownAgain) {
    auto& panel = OpenPanel();
    WorkspaceModel::Get().Hide(kTab);
    EXPECT_EQ(Suite().SetTextLines3("lost", "lost", "lost"), 0);
    WorkspaceModel::Get().Show(kTab);
    EXPECT_EQ(Lines(panel), (Lines5{"", "", "", "", ""}));
    EXPECT_EQ(Rows(panel), (Rows3{"", "", ""}));
}

TEST_F(SuiteTextSlotsTest, TheFirstOfTwoSuffixesAppliesToTheNextUpdateOnly) {
    auto& panel = OpenPanel();
    EXPECT_EQ(Suite().SetFirstLineSuffix("a"), 0);
    EXPECT_EQ(Suite().SetFirstLineSuffix("b"), 0);
    ASSERT_EQ(Suite().SetTextLines3("x", "y", "z"), 0);
    EXPECT_EQ(Rows(panel)[0], "xa");
    EXPECT_EQ(Lines(panel)[0], "xa");
    ASSERT_EQ(Suite().SetTextLines3("x", "y", "z"), 0);
    EXPECT_EQ(Rows(panel)[0], "x");
}

TEST_F(SuiteTextSlotsTest, ANullSuffixCancelsAPendingOne) {
    auto& panel = OpenPanel();
    EXPECT_EQ(Suite().SetFirstLineSuffix("a"), 0);
    EXPECT_EQ(Suite().SetFirstLineSuffix(nullptr), 0);
    ASSERT_EQ(Suite().SetTextLines3("x", "y", "z"), 0);
    EXPECT_EQ(Rows(panel)[0], "x");
    // After a cancellation a new suffix is taken again.
    EXPECT_EQ(Suite().SetFirstLineSuffix("c"), 0);
    ASSERT_EQ(Suite().SetTextLines3W(u"x", nullptr, nullptr), 0);
    EXPECT_EQ(Rows(panel)[0], "xc");
}

TEST_F(SuiteTextSlotsTest, ASuffixIsDroppedWhenTheNextUpdateChangesTheType) {
    auto& panel = OpenPanel();
    ASSERT_EQ(Suite().SetTextLines3("x", nullptr, nullptr), 0);
    EXPECT_EQ(Suite().SetFirstLineSuffix("a"), 0);
    ASSERT_EQ(Suite().SetTextLines5("x", nullptr, nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(Rows(panel)[0], "x");
    ASSERT_EQ(Suite().SetTextLines5("y", nullptr, nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(Rows(panel)[0], "y");
}

TEST_F(SuiteTextSlotsTest, TheSuffixIsConvertedFromTheHostCodePage) {
    auto& panel = OpenPanel();
    HostControls::Get().SetCodepage("cp1252");
    EXPECT_EQ(Suite().SetFirstLineSuffix("\xE9\x80"), 0); // é and the euro sign
    ASSERT_EQ(Suite().SetTextLines3("x", nullptr, nullptr), 0);
    EXPECT_EQ(Rows(panel)[0], "x\u00E9\u20AC");
}

TEST_F(SuiteTextSlotsTest, AnIntegerThrownWhileShowingTextIsTheSlotsResult) {
    UseSubstitutePanel(
        kTab, [](SubstitutePanel&, const UTF16String*, TextLinesType) { throw QZ_Err{7}; });
    OpenPanel();
    EXPECT_EQ(Suite().SetTextLines3("a", "b", "c"), 7);
    EXPECT_EQ(Suite().SetTextLines5("a", "b", "c", "d", "e"), 7);
    EXPECT_EQ(Suite().SetTextLines3W(u"a", u"b", u"c"), 7);
    EXPECT_EQ(Suite().SetTextLines5W(u"a", u"b", u"c", u"d", u"e"), 7);
    EXPECT_TRUE(HostControls::Get().Reported().empty());
}

TEST_F(SuiteTextSlotsTest, AStdExceptionWhileShowingTextIsReportedAndTheReportResultReturned) {
    UseSubstitutePanel(kTab, [](SubstitutePanel&, const UTF16String*, TextLinesType) {
        throw std::runtime_error("text went wrong");
    });
    OpenPanel();
    HostControls::Get().SetReportResult(42);
    EXPECT_EQ(Suite().SetTextLines3("a", "b", "c"), 42);
    EXPECT_EQ(Suite().SetTextLines5W(u"a", u"b", u"c", u"d", u"e"), 42);
    EXPECT_EQ(HostControls::Get().Reported(),
              (std::vector<std::string>{"text went wrong", "text went wrong"}));
}

TEST_F(SuiteTextSlotsTest, ARowOfAnotherClassIsReportedAsTheToolkitError) {
    auto& panel = OpenPanel();
    auto* container = panel.GetControlsContainer(0);
    auto r20 = container->UI_RemoveChild(container->UI_GetChild(20));
    auto r21 = container->UI_RemoveChild(container->UI_GetChild(20));
    auto r22 = container->UI_RemoveChild(container->UI_GetChild(20));
    container->UI_AddChild(std::move(r21));
    container->UI_AddChild(std::move(r22));
    container->UI_AddChild(std::make_unique<kitui::controls::UI_ControlsContainer>(0));
    HostControls::Get().SetReportResult(9);
    EXPECT_EQ(Suite().SetTextLines3("a", "b", "c"), 9);
    EXPECT_EQ(HostControls::Get().Reported(), std::vector<std::string>{"Invalid type conversion."});
}

} // namespace

namespace {

class SuitePanelOnDemandTest : public TextLinesFixture {};

TEST_F(SuitePanelOnDemandTest, ASlotReturnsZeroWhenTheWorkspaceCreatesNoPanelOnDemand) {
    // The tab stands shown, but the plug-in object holds no panel, and the workspace
    // builds none: the panel created on demand is null.
    auto& panel = OpenPanel();
    ASSERT_EQ(Suite().SetTextLines3("kept", "", ""), 0);
    infopal::InfoPal::GetPlugin()->SetPanel(nullptr);
    qztest::WorkspaceCreatesNoPanel(kTab);
    ASSERT_TRUE(infopal::InfoPal::GetPlugin()->PanelIsShown());

    EXPECT_EQ(Suite().SetTextLines3("lost", "", ""), 0);
    EXPECT_EQ(Suite().SetPixelInfo(nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(infopal::InfoPal::GetPlugin()->GetPanel(), nullptr);
    // The toggle that asked for a panel closed the tab instead; nothing reached the panel
    // before it went.
    EXPECT_EQ(WorkspaceModel::Get().Panel(kTab), nullptr);
    (void)panel;
}

TEST_F(SuitePanelOnDemandTest, VisibilitySlotsAskNothingOfTheWorkspaceWithoutAPluginObject) {
    OpenPanel();
    WorkspaceModel::Get().Hide(kTab);
    ASSERT_EQ(Death(), 0);
    const int toggles = HostControls::Get().TabToggles();
    EXPECT_EQ(Suite().ShowPanel(), 0);
    EXPECT_EQ(Suite().SetPanelVisible(true), 0);
    EXPECT_EQ(Suite().UpdatePanelTab(), 0);
    EXPECT_EQ(HostControls::Get().TabToggles(), toggles);
    EXPECT_FALSE(WorkspaceModel::Get().State(kTab).Visible());
}

} // namespace
