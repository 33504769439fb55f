// The comparison of a script's standard output with its expected text: other lines
// exactly, snapshot lines on what the expected line names.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "OutputComparison.h"

namespace {

using qzhost::scenario::CompareOutput;
using Problems = std::vector<std::string>;

const std::string kSnapshot =
    R"({"op":"snapshot","panel":true,"visible":true,"mode":0,"size":[206,114],)"
    R"("lines":["a","","","",""],"controls":[)"
    R"({"id":0,"class":"UI_Divider","rect":[5,63,193,2],"visible":true},)"
    R"({"id":7,"class":"UI_StaticText","rect":[51,4,90,14],"visible":true,"text":"255","color":"default"},)"
    R"({"id":20,"class":"UI_StaticText","rect":[6,68,206,14],"visible":true,"text":"a","color":"alert"}],)"
    R"("swatch":[1,0.5,0,1]})";

const std::string kLoad = R"({"op":"load","result":0,"global":true,"suite_published":true})";

/// The output: the load line, then the snapshot line.
std::string Output() {
    return kLoad + "\n" + kSnapshot + "\n";
}

/// Expected text: the load line, then `snapshot`.
std::string Expecting(const std::string& snapshot) {
    return kLoad + "\n" + snapshot + "\n";
}

TEST(OutputComparison, IdenticalTextsAgree) {
    EXPECT_EQ(CompareOutput(Output(), Output()), Problems{});
    EXPECT_EQ(CompareOutput("", ""), Problems{});
}

TEST(OutputComparison, SnapshotLineAgreesOnTheMembersThatTheExpectedLineNames) {
    EXPECT_EQ(CompareOutput(Expecting(R"({"op":"snapshot","panel":true,"mode":0})"), Output()),
              Problems{});
    EXPECT_EQ(CompareOutput(Expecting(R"({"swatch":[1,0.5,0,1],"op":"snapshot"})"), Output()),
              Problems{})
        << "the order of the members does not matter";
}

TEST(OutputComparison, SnapshotLineComparesOnlyTheListedControlsOnTheirNamedMembers) {
    EXPECT_EQ(CompareOutput(Expecting(R"({"op":"snapshot","controls":[{"id":7,"text":"255"},)"
                                      R"({"id":0,"rect":[5,63,193,2]}]})"),
                            Output()),
              Problems{});
    EXPECT_EQ(CompareOutput(Expecting(R"({"op":"snapshot","controls":[]})"), Output()), Problems{});
}

TEST(OutputComparison, NamedMemberThatDiffersFails) {
    EXPECT_EQ(CompareOutput(Expecting(R"({"op":"snapshot","mode":3})"), Output()),
              Problems{"line 2: \"mode\": expected 3, actual 0"});
    EXPECT_EQ(
        CompareOutput(Expecting(R"({"op":"snapshot","lines":["a","","","",""," "]})"), Output()),
        Problems{"line 2: \"lines\": expected [\"a\",\"\",\"\",\"\",\"\",\" \"], actual "
                 "[\"a\",\"\",\"\",\"\",\"\"]"});
}

TEST(OutputComparison, WholeNumberAndFractionSpellingsDiffer) {
    EXPECT_EQ(CompareOutput(Expecting(R"({"op":"snapshot","mode":0.0})"), Output()),
              Problems{"line 2: \"mode\": expected 0.0, actual 0"});
}

TEST(OutputComparison, ListedControlMemberThatDiffersFails) {
    EXPECT_EQ(
        CompareOutput(Expecting(R"({"op":"snapshot","controls":[{"id":20,"color":"default"}]})"),
                      Output()),
        Problems{"line 2: control 20 \"color\": expected \"default\", actual \"alert\""});
}

TEST(OutputComparison, MemberAbsentFromTheActualSnapshotFails) {
    EXPECT_EQ(CompareOutput(Expecting(R"({"op":"snapshot","colour":1})"), Output()),
              Problems{"line 2: the expected line names \"colour\", which the actual snapshot "
                       "does not have"});
    EXPECT_EQ(
        CompareOutput(Expecting(R"({"op":"snapshot","controls":[{"id":0,"text":""}]})"), Output()),
        Problems{"line 2: control 0 has no \"text\" in the actual snapshot"});
    EXPECT_EQ(CompareOutput(Expecting(R"({"op":"snapshot","controls":[{"id":23}]})"), Output()),
              Problems{"line 2: control 23 is not in the actual snapshot"});
}

TEST(OutputComparison, ExpectedSnapshotLineThatIsNotValidJsonFails) {
    const Problems problems = CompareOutput(Expecting(R"({"op":"snapshot","mode":)"), Output());
    ASSERT_EQ(problems.size(), 1u);
    EXPECT_EQ(problems[0].rfind("line 2: the expected snapshot line is not valid JSON (", 0), 0u)
        << problems[0];
}

TEST(OutputComparison, ExpectedSnapshotLineMustBeAnObjectThatNamesItsOp) {
    EXPECT_EQ(CompareOutput(Expecting("[1]"), Output()),
              Problems{"line 2: the expected snapshot line is not a JSON object"});
    EXPECT_EQ(CompareOutput(Expecting("{}"), Output()),
              Problems{"line 2: the expected snapshot line does not name \"op\""});
    EXPECT_EQ(CompareOutput(Expecting(R"({"op":"menu"})"), Output()),
              Problems{"line 2: \"op\": expected \"menu\", actual \"snapshot\""});
}

TEST(OutputComparison, ExpectedControlsMustHaveDistinctIds) {
    EXPECT_EQ(
        CompareOutput(Expecting(R"({"op":"snapshot","controls":[{"text":"255"}]})"), Output()),
        Problems{"line 2: the expected \"controls\" has an entry without an integer "
                 "\"id\": {\"text\":\"255\"}"});
    EXPECT_EQ(
        CompareOutput(Expecting(R"({"op":"snapshot","controls":[{"id":7},{"id":7}]})"), Output()),
        Problems{"line 2: the expected \"controls\" lists control 7 twice"});
    EXPECT_EQ(CompareOutput(Expecting(R"({"op":"snapshot","controls":{"id":7}})"), Output()),
              Problems{"line 2: the expected \"controls\" is not a list"});
}

TEST(OutputComparison, OtherLinesCompareExactly) {
    const std::string reordered =
        R"({"op":"load","global":true,"result":0,"suite_published":true})";
    EXPECT_EQ(CompareOutput(reordered + "\n" + kSnapshot + "\n", Output()),
              Problems{"line 1: differs\n  expected: " + reordered + "\n  actual:   " + kLoad});
    EXPECT_EQ(CompareOutput(R"({"op":"load"})"
                            "\n",
                            kLoad + "\n"),
              Problems{"line 1: differs\n  expected: {\"op\":\"load\"}\n  actual:   " + kLoad})
        << "a subset of another line's members is not enough";
}

TEST(OutputComparison, ANonSnapshotOutputLineIsNotReadAsASubset) {
    const std::string snapshot_without_panel = R"({"op":"snapshot","panel":false})";
    EXPECT_EQ(CompareOutput(R"({"op":"snapshot"})"
                            "\n",
                            snapshot_without_panel + "\n"),
              Problems{});
    EXPECT_EQ(CompareOutput(R"({"op":"snapshot"})"
                            "\n",
                            R"({"op":"workspace"})"
                            "\n"),
              Problems{"line 1: differs\n  expected: {\"op\":\"snapshot\"}\n  actual:   "
                       "{\"op\":\"workspace\"}"});
}

TEST(OutputComparison, NumberOfLinesMustAgree) {
    EXPECT_EQ(CompareOutput(Output(), kLoad + "\n"),
              Problems{"the actual output has 1 line, the expected text 2 lines; the first missing "
                       "line: " +
                       kSnapshot});
    EXPECT_EQ(CompareOutput(kLoad + "\n", Output()),
              Problems{"the actual output has 2 lines, the expected text 1 line; the first extra "
                       "line: " +
                       kSnapshot});
}

TEST(OutputComparison, LastLineEndMustAgree) {
    EXPECT_EQ(CompareOutput(kLoad + "\n", kLoad),
              Problems{"the last line of the actual output has no line end"});
    EXPECT_EQ(CompareOutput(kLoad, kLoad + "\n"),
              Problems{"the last line of the expected text has no line end"});
}

TEST(OutputComparison, ReportsEveryDifferenceWithItsLine) {
    const Problems problems = CompareOutput(
        Expecting(R"({"op":"snapshot","visible":false,"controls":[{"id":7,"text":"0"}]})"),
        Output());
    EXPECT_EQ(problems, (Problems{"line 2: \"visible\": expected false, actual true",
                                  "line 2: control 7 \"text\": expected \"0\", actual \"255\""}));
}

} // namespace
