#include <gtest/gtest.h>

#include "TextLinesFixture.h"
#include "kitui/controls/UI_Divider.h"

namespace {

using infopal::TextLinesType;
using qzhost::WorkspaceModel;
using namespace textlines_test;

class ShowTextLinesTest : public TextLinesFixture {
protected:
    void Show(infopal::InfoPal_UI& panel, const char* l1, const char* l2, const char* l3,
              const char* l4, const char* l5, TextLinesType type) {
        panel.ShowTextLines(Utf16(l1), Utf16(l2), Utf16(l3), Utf16(l4), Utf16(l5), type);
    }
};

TEST_F(ShowTextLinesTest, ThreeLineTypeShowsOneLinePerRow) {
    auto& panel = OpenPanel();
    Show(panel, "one", "two", "three", "four", "five", TextLinesType::Three);
    EXPECT_EQ(Rows(panel), (Rows3{"one", "two", "three"}));
    EXPECT_EQ(Lines(panel), (Lines5{"one", "two", "three", "four", "five"}));
    EXPECT_EQ(Type(panel), 0U);
    EXPECT_EQ(panel.GetDisplayState(), infopal::DisplayState::TextLines);
    EXPECT_EQ(panel.CachedReadoutValue(), -1.0);
}

TEST_F(ShowTextLinesTest, FiveLineTypeJoinsLinesTwoAndThreeAndLinesFourAndFive) {
    auto& panel = OpenPanel();
    Show(panel, "a", "bb", "c", "dd", "e", TextLinesType::Five);
    EXPECT_EQ(Rows(panel), (Rows3{"a", "bb c", "dd e"}));
    EXPECT_EQ(Type(panel), 1U);
}

TEST_F(ShowTextLinesTest, FiveEmptyLinesClearAllRowsAndCountAsAChange) {
    auto& panel = OpenPanel();
    Show(panel, "", "", "", "", "", TextLinesType::Three);
    const auto before = RowInvalidations(panel);
    Show(panel, "", "", "", "", "", TextLinesType::Three);
    EXPECT_EQ(RowInvalidations(panel), before + 3); // redrawn over empty rows
    Show(panel, "x", "y", "z", "", "", TextLinesType::Three);
    ASSERT_EQ(Rows(panel), (Rows3{"x", "y", "z"}));
    const auto with_text = RowInvalidations(panel);
    Show(panel, "", "", "", "", "", TextLinesType::Three);
    EXPECT_EQ(Rows(panel), (Rows3{"", "", ""}));
    EXPECT_EQ(Lines(panel), (Lines5{"", "", "", "", ""}));
    EXPECT_EQ(RowInvalidations(panel), with_text + 3);
}

TEST_F(ShowTextLinesTest, TheSameNonEmptyLinesTwiceDoNotRedraw) {
    auto& panel = OpenPanel();
    Show(panel, "p", "q", "r", "s", "t", TextLinesType::Five);
    const auto before = RowInvalidations(panel);
    Show(panel, "p", "q", "r", "s", "t", TextLinesType::Five);
    EXPECT_EQ(RowInvalidations(panel), before);
    EXPECT_EQ(Rows(panel), (Rows3{"p", "q r", "s t"}));
}

TEST_F(ShowTextLinesTest, AnyEmptyLineMakesTheSameLinesRedraw) {
    auto& panel = OpenPanel();
    Show(panel, "p", "q", "r", "", "", TextLinesType::Three);
    const auto before = RowInvalidations(panel);
    Show(panel, "p", "q", "r", "", "", TextLinesType::Three);
    EXPECT_EQ(RowInvalidations(panel), before + 3);
}

TEST_F(ShowTextLinesTest, TheSameLinesRedrawAfterThePixelReadoutTookTheDisplay) {
    auto& panel = OpenPanel();
    Show(panel, "p", "q", "r", "s", "t", TextLinesType::Five);
    const PF_PixelFloat pixel{1, 0.5f, 0.25f, 0};
    panel.UpdatePixelInfo(&pixel, nullptr, nullptr);
    ASSERT_NE(panel.GetDisplayState(), infopal::DisplayState::TextLines);
    const auto before = RowInvalidations(panel);
    Show(panel, "p", "q", "r", "s", "t", TextLinesType::Five);
    EXPECT_EQ(RowInvalidations(panel), before + 3);
    EXPECT_EQ(panel.GetDisplayState(), infopal::DisplayState::TextLines);
}

TEST_F(ShowTextLinesTest, ALongerSecondLineIndentsTheThirdRowByTheDifferencePlusOne) {
    auto& panel = OpenPanel();
    Show(panel, "top", "123456789", "x", "abcdef", "y", TextLinesType::Five);
    EXPECT_EQ(Rows(panel)[2], "    abcdef y"); // 9 - 6 + 1 = 4 spaces
}

TEST_F(ShowTextLinesTest, ASecondLineAsLongAsOrShorterThanTheFourthGivesNoIndent) {
    auto& panel = OpenPanel();
    Show(panel, "top", "123456", "x", "abcdef", "y", TextLinesType::Five);
    EXPECT_EQ(Rows(panel)[2], "abcdef y");
    Show(panel, "top", "12", "x", "abcdef", "y", TextLinesType::Five);
    EXPECT_EQ(Rows(panel)[2], "abcdef y");
}

TEST_F(ShowTextLinesTest, TheIndentCountsUtf16UnitsNotBytes) {
    auto& panel = OpenPanel();
    // Three units (two of them a surrogate pair) against one unit of three UTF-8 bytes.
    Show(panel, "", "a\U0001F600", "", "\u00E9", "", TextLinesType::Five);
    EXPECT_EQ(Rows(panel)[2], "   \u00E9 ");
}

TEST_F(ShowTextLinesTest, SwitchingFromFiveToThreeLinesEmptiesTheRowsFirst) {
    auto& panel = OpenPanel();
    Show(panel, "a", "b", "c", "d", "e", TextLinesType::Five);
    ASSERT_EQ(Rows(panel), (Rows3{"a", "b c", "d e"}));
    // With drawing suppressed only the type change touches the rows.
    qzhost::HostControls::Get().SetUpdateSuppressed(true);
    Show(panel, "a", "b", "c", "", "", TextLinesType::Three);
    EXPECT_EQ(Rows(panel), (Rows3{"", "", ""}));
    EXPECT_EQ(Lines(panel), (Lines5{"a", "b", "c", "", ""}));
    qzhost::HostControls::Get().SetUpdateSuppressed(false);
    Show(panel, "a", "b", "c", "", "", TextLinesType::Three);
    EXPECT_EQ(Rows(panel), (Rows3{"a", "b", "c"}));
}

TEST_F(ShowTextLinesTest, ATypeChangeRedrawsTheSameLinesAndDropsAPendingSuffix) {
    auto& panel = OpenPanel();
    Show(panel, "a", "b", "c", "d", "e", TextLinesType::Three);
    panel.SetFirstLineSuffix("!");
    const auto before = RowInvalidations(panel);
    Show(panel, "a", "b", "c", "d", "e", TextLinesType::Five);
    EXPECT_GT(RowInvalidations(panel), before);
    EXPECT_EQ(Rows(panel), (Rows3{"a", "b c", "d e"}));
    Show(panel, "a", "b", "c", "d", "e", TextLinesType::Five);
    EXPECT_EQ(Rows(panel)[0], "a"); // the suffix went with the type change
}

TEST_F(ShowTextLinesTest, AnUnknownTypeDrawsNothingButKeepsTheLines) {
    auto& panel = OpenPanel();
    Show(panel, "a", "b", "c", "", "", TextLinesType::Three);
    Show(panel, "k", "l", "m", "n", "o", static_cast<TextLinesType>(7));
    EXPECT_EQ(Lines(panel), (Lines5{"k", "l", "m", "n", "o"}));
    EXPECT_EQ(Rows(panel), (Rows3{"", "", ""})); // emptied by the type change only
}

TEST_F(ShowTextLinesTest, UpdateSuppressionStoresTheLinesWithoutDrawing) {
    auto& panel = OpenPanel();
    qzhost::HostControls::Get().SetUpdateSuppressed(true);
    Show(panel, "a", "b", "c", "", "", TextLinesType::Three);
    EXPECT_EQ(Lines(panel), (Lines5{"a", "b", "c", "", ""}));
    EXPECT_EQ(Rows(panel), (Rows3{"", "", ""}));
}

TEST_F(ShowTextLinesTest, AlertFlagsColourTheirRowsByType) {
    auto& panel = OpenPanel();
    qzhost::HostControls::Get().SetAlerts(true, false, true, false);
    Show(panel, "a", "b", "c", "", "", TextLinesType::Three);
    EXPECT_EQ(Row(panel, 0).GetTextColorID(), std::optional<std::size_t>(10076));
    EXPECT_TRUE(Row(panel, 1).HasDefaultTextColor());
    EXPECT_EQ(Row(panel, 2).GetTextColorID(), std::optional<std::size_t>(10076));

    // Five lines: row 2 needs flags 2 and 3, row 3 needs flags 3 and 4.
    qzhost::HostControls::Get().SetAlerts(false, true, true, false);
    Show(panel, "a", "b", "c", "d", "e", TextLinesType::Five);
    EXPECT_TRUE(Row(panel, 0).HasDefaultTextColor());
    EXPECT_EQ(Row(panel, 1).GetTextColorID(), std::optional<std::size_t>(10076));
    EXPECT_TRUE(Row(panel, 2).HasDefaultTextColor());
    qzhost::HostControls::Get().SetAlerts(false, false, true, true);
    Show(panel, "a", "b", "", "d", "e", TextLinesType::Five);
    EXPECT_TRUE(Row(panel, 1).HasDefaultTextColor());
    EXPECT_EQ(Row(panel, 2).GetTextColorID(), std::optional<std::size_t>(10076));
}

TEST_F(ShowTextLinesTest, NonEmptyLinesInvertThePluginFlagAndEmptyOnesDoNot) {
    auto& panel = OpenPanel();
    infopal::InfoPal& plugin = *infopal::InfoPal::GetPlugin();
    ASSERT_FALSE(plugin.GetFlag());
    Show(panel, "a", "", "", "", "", TextLinesType::Three);
    EXPECT_TRUE(plugin.GetFlag());
    Show(panel, "a", "", "", "", "", TextLinesType::Three);
    EXPECT_FALSE(plugin.GetFlag());
    Show(panel, "", "", "", "", "", TextLinesType::Three);
    EXPECT_FALSE(plugin.GetFlag());
}

TEST_F(ShowTextLinesTest, OnlyTheLatestUpdateWhileNotVisibleRunsWhenThePanelIsShownAgain) {
    auto& panel = OpenPanel();
    Show(panel, "old", "", "", "", "", TextLinesType::Three);
    WorkspaceModel::Get().Hide(kTab);
    Show(panel, "first", "1", "", "", "", TextLinesType::Three);
    Show(panel, "second", "2", "3", "4", "5", TextLinesType::Five);
    EXPECT_TRUE(panel.HasPendingTextUpdate());
    EXPECT_EQ(Lines(panel), (Lines5{"old", "", "", "", ""}));
    EXPECT_EQ(Rows(panel), (Rows3{"old", "", ""}));

    WorkspaceModel::Get().Show(kTab); // the panel runs its pending updates
    EXPECT_FALSE(panel.HasPendingTextUpdate());
    EXPECT_EQ(Lines(panel), (Lines5{"second", "2", "3", "4", "5"}));
    EXPECT_EQ(Rows(panel), (Rows3{"second", "2 3", "4 5"}));
    EXPECT_EQ(Type(panel), 1U);
}

TEST_F(ShowTextLinesTest, ADeferredUpdateRunsOnceOnly) {
    auto& panel = OpenPanel();
    WorkspaceModel::Get().Hide(kTab);
    Show(panel, "late", "", "", "", "", TextLinesType::Three);
    WorkspaceModel::Get().Show(kTab);
    ASSERT_EQ(Rows(panel)[0], "late");
    Show(panel, "now", "", "", "", "", TextLinesType::Three);
    WorkspaceModel::Get().Hide(kTab);
    WorkspaceModel::Get().Show(kTab); // nothing pending any more
    EXPECT_EQ(Rows(panel)[0], "now");
}

TEST_F(ShowTextLinesTest, AnUpdateBehindAnotherTabWaitsUntilTheTabComesToTheFront) {
    auto& panel = OpenPanel();
    WorkspaceModel::Get().SetAnswers(kTab, /*shown=*/true, /*front=*/false, /*stacked=*/false);
    Show(panel, "behind", "", "", "", "", TextLinesType::Three);
    EXPECT_EQ(Rows(panel)[0], "");
    WorkspaceModel::Get().SetAnswers(kTab, true, true, false);
    EXPECT_EQ(Rows(panel)[0], "behind");
}

TEST_F(ShowTextLinesTest, TheSuffixWaitsForTheDeferredUpdate) {
    auto& panel = OpenPanel();
    panel.SetFirstLineSuffix("+s");
    WorkspaceModel::Get().Hide(kTab);
    Show(panel, "line", "", "", "", "", TextLinesType::Three);
    WorkspaceModel::Get().Show(kTab);
    EXPECT_EQ(Rows(panel)[0], "line+s");
}

TEST_F(ShowTextLinesTest, ARowOfAnotherClassIsTheToolkitsTypeConversionError) {
    auto& panel = OpenPanel();
    auto* container = panel.GetControlsContainer(0);
    // Control 20 becomes a divider; 21 and 22 stay texts.
    auto r20 = container->UI_RemoveChild(container->UI_GetChild(20));
    auto r21 = container->UI_RemoveChild(container->UI_GetChild(20));
    auto r22 = container->UI_RemoveChild(container->UI_GetChild(20));
    container->UI_AddChild(std::make_unique<kitui::controls::UI_Divider>());
    container->UI_AddChild(std::move(r21));
    container->UI_AddChild(std::move(r22));
    ASSERT_EQ(container->UI_GetChildCount(), 23U);
    try {
        Show(panel, "a", "", "", "", "", TextLinesType::Three);
        FAIL() << "no error";
    } catch (const kitcore::config::Error& error) {
        EXPECT_STREQ(error.what(), "Invalid type conversion.");
        EXPECT_EQ(error.Major(), 105);
        EXPECT_EQ(error.Minor(), 21);
    }
}

} // namespace
