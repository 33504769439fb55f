// `qzhost inspect --at -` driven through a pipe by another program: each point is answered
// as soon as its line arrives, before the next line is written; a bad line ends the run
// with one message, after the answers to the lines before it.
#if defined(QZ_QZHOST_PROGRAM) && defined(QZ_INFOPAL_LIBRARY)

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>

#include "BuildPaths.h"
#include "PixelViewTestSupport.h"

namespace pixelviewtest {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

/// How long a test waits for an answer: the first includes the program's start.
constexpr double kAnswerSeconds = 60;

TEST(PixelViewStream, EachJsonLineIsAnsweredBeforeTheNextLineIsWritten) {
    TempFolder folder;
    QzhostChild child({"inspect", "--at", "-", "--json", "--prefs", folder.File("p.txt")});
    child.Write("45,85\n");
    const std::string first = child.ReadLines(1, kAnswerSeconds);
    ASSERT_FALSE(first.empty()) << "no answer to the first line while standard input is open";
    const json panel = json::parse(first);
    EXPECT_EQ(panel.at("at"), json::array({45, 85}));
    EXPECT_EQ(ControlText(panel, 7), "4.0000");

    // Comments and empty lines are passed over; the next point is answered in turn.
    child.Write("# the red patch\n\n5.5,5\n");
    const std::string second = child.ReadLines(1, kAnswerSeconds);
    ASSERT_FALSE(second.empty()) << "no answer to the second point";
    const json next = json::parse(second);
    EXPECT_EQ(next.at("at"), json::array({5.5, 5}));
    EXPECT_EQ(ControlText(next, 7), "1.0000");
    EXPECT_EQ(ControlText(next, 15), "5");

    child.CloseInput();
    EXPECT_EQ(child.Wait(kAnswerSeconds), 0) << child.Errors();
    EXPECT_EQ(child.RestOfOutput(), "");
    EXPECT_EQ(child.Errors(), "");
}

TEST(PixelViewStream, EachTextPanelIsAnsweredBeforeTheNextLineIsWritten) {
    TempFolder folder;
    QzhostChild child({"inspect", "--at", "-", "--prefs", folder.File("p.txt")});
    child.Write("45,85\n");
    const std::string first = child.ReadPanel(kAnswerSeconds);
    ASSERT_FALSE(first.empty()) << "no panel for the first line while standard input is open";
    const auto lines = Lines(first);
    ASSERT_GE(lines.size(), 3u) << first;
    EXPECT_TRUE(std::regex_search(lines[0], std::regex("R : +4\\.0000 +\\| .*X : +45$"))) << first;
    EXPECT_EQ(lines.back(), "") << "a panel of the stream ends with an empty line";

    child.Write("125,85\n");
    const std::string second = child.ReadPanel(kAnswerSeconds);
    ASSERT_FALSE(second.empty()) << "no panel for the second line";
    EXPECT_TRUE(std::regex_search(Lines(second).at(0), std::regex("X : +125$"))) << second;

    child.CloseInput();
    EXPECT_EQ(child.Wait(kAnswerSeconds), 0) << child.Errors();
    EXPECT_EQ(child.RestOfOutput(), "");
    EXPECT_EQ(child.Errors(), "");
}

/// A bad line while standard input is still open: the run ends at once with status 2 and
/// one line on standard error; the answer before it stays, nothing follows it.
void ExpectBadLineEndsTheRun(const std::string& bad, const std::string& message, bool as_json) {
    TempFolder folder;
    std::vector<std::string> arguments = {"inspect", "--at", "-", "--prefs", folder.File("p.txt")};
    if (as_json) {
        arguments.push_back("--json");
    }
    QzhostChild child(arguments);
    child.Write("45,85\n");
    const std::string answer =
        as_json ? child.ReadLines(1, kAnswerSeconds) : child.ReadPanel(kAnswerSeconds);
    ASSERT_FALSE(answer.empty()) << "no answer to the first line";
    child.Write(bad + "\n");
    EXPECT_EQ(child.Wait(kAnswerSeconds), 2) << "the bad line did not end the run";
    EXPECT_EQ(child.RestOfOutput(), "");
    const auto errors = Lines(child.Errors());
    ASSERT_EQ(errors.size(), 1u) << child.Errors();
    EXPECT_EQ(errors[0].rfind("qzhost inspect: ", 0), 0u) << errors[0];
    EXPECT_NE(errors[0].find(message), std::string::npos) << errors[0];
}

TEST(PixelViewStream, AMalformedLineEndsTheRunAfterTheAnswersBeforeIt) {
    ExpectBadLineEndsTheRun("not a point", "standard input line 2", true);
    ExpectBadLineEndsTheRun("1,2,3", "standard input line 2", false);
}

TEST(PixelViewStream, APointOutsideTheImageEndsTheRunAfterTheAnswersBeforeIt) {
    ExpectBadLineEndsTheRun("300,2", "outside the image", true);
    ExpectBadLineEndsTheRun("-1,5", "outside the image", false);
}

TEST(PixelViewStream, ABadLineLeavesThePanelsBeforeItAndShowsNoneAfterIt) {
    TempFolder folder;
    const std::string png = folder.File("panel.png");
    const ProgramRun run = Qzhost("inspect --at - --json --png " + Quoted(png) + " --prefs " +
                                      Quoted(folder.File("p.txt")),
                                  "1,1\n5,5\n300,2\n45,85\n");
    EXPECT_EQ(run.status, 2);
    const auto panels = JsonLines(run.out);
    ASSERT_EQ(panels.size(), 2u) << run.out;
    EXPECT_EQ(panels[0].at("at"), json::array({1, 1}));
    EXPECT_EQ(panels[1].at("at"), json::array({5, 5}));
    const auto errors = Lines(run.err);
    ASSERT_EQ(errors.size(), 1u) << run.err;
    EXPECT_NE(errors[0].find("point 300,2 lies outside the image"), std::string::npos) << errors[0];
    // The drawn panels of the answered points stay; none is drawn for the rest.
    EXPECT_TRUE(fs::exists(folder.File("panel-1.png")));
    EXPECT_TRUE(fs::exists(folder.File("panel-2.png")));
    EXPECT_FALSE(fs::exists(folder.File("panel-3.png")));
    EXPECT_FALSE(fs::exists(folder.File("panel-4.png")));
}

TEST(PixelViewStream, PointsOfTheCommandLineAroundStandardInputKeepTheirOrder) {
    TempFolder folder;
    const ProgramRun run =
        Qzhost("inspect --at 5,5 --at - --at 85,5 --json --prefs " + Quoted(folder.File("p.txt")),
               "45,5\n");
    ASSERT_EQ(run.status, 0) << run.err;
    const auto panels = JsonLines(run.out);
    ASSERT_EQ(panels.size(), 3u);
    EXPECT_EQ(panels[0].at("at"), json::array({5, 5}));
    EXPECT_EQ(panels[1].at("at"), json::array({45, 5}));
    EXPECT_EQ(panels[2].at("at"), json::array({85, 5}));
}

TEST(PixelViewStream, APointOfTheCommandLineOutsideTheImageIsRefusedBeforeStandardInputIsRead) {
    TempFolder folder;
    const ProgramRun run = Qzhost(
        "inspect --at - --at 999,5 --json --prefs " + Quoted(folder.File("p.txt")), "45,5\n");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(Lines(run.err).size(), 1u) << run.err;
    EXPECT_FALSE(fs::exists(folder.File("p.txt")));
}

} // namespace
} // namespace pixelviewtest

#endif
