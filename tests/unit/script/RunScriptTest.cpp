// The host script runner on lines that need no plug-in: framing, the error object and
// exit statuses, argument checks, and the host op.
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "ScriptRun.h"
#include "host/COakApp.h"
#include "qzhost/HostControls.h"
#include "script/ScriptRunner.h"

namespace {

using qztest::CommandRun;

CommandRun RunLines(const std::string& script, const std::string& plugin = "no-such-plugin.so") {
    return qztest::RunScriptText(script, plugin);
}

class ScriptRunner : public ::testing::Test {
protected:
    void TearDown() override { qzhost::HostControls::Get().Reset(); }
};

TEST_F(ScriptRunner, SkipsEmptyAndCommentLines) {
    const CommandRun result = RunLines("\n   \n# a comment\n  # indented\n{\"op\": \"menu\"}\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "{\"op\":\"menu\",\"items\":[]}\n");
    EXPECT_EQ(result.err, "");
}

TEST_F(ScriptRunner, AcceptsWindowsLineEnds) {
    const CommandRun result = RunLines("{\"op\": \"menu\"}\r\n{\"op\": \"menu\"}\r\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "{\"op\":\"menu\",\"items\":[]}\n{\"op\":\"menu\",\"items\":[]}\n");
}

TEST_F(ScriptRunner, StopsAtAnUnknownOpAndNamesItsLine) {
    const CommandRun result =
        RunLines("{\"op\": \"menu\"}\n\n{\"op\": \"nope\"}\n{\"op\": \"menu\"}\n");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "{\"op\":\"menu\",\"items\":[]}\n"
                          "{\"op\":\"nope\",\"error\":\"unknown op \\\"nope\\\"\"}\n");
    EXPECT_NE(result.err.find("line 3"), std::string::npos) << result.err;
}

TEST_F(ScriptRunner, ReportsInvalidJsonWithANullOp) {
    const CommandRun result = RunLines("{\"op\": menu}\n");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "{\"op\":null,\"error\":\"not valid JSON\"}\n");
    EXPECT_NE(result.err.find("line 1"), std::string::npos) << result.err;
}

TEST_F(ScriptRunner, RefusesANumberBeyondTheRangeOfADoubleAsABadLine) {
    const CommandRun result = RunLines("{\"op\": \"menu\", \"x\": -1e400}\n{\"op\": \"menu\"}\n");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "{\"op\":null,\"error\":\"a number beyond the range of a double\"}\n");
    EXPECT_NE(result.err.find("line 1"), std::string::npos) << result.err;
}

TEST_F(ScriptRunner, ReportsAPluginFileThatCannotBeLoadedAsAHostFailure) {
    const CommandRun result = RunLines("{\"op\": \"load\"}\n{\"op\": \"menu\"}\n");
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.out.rfind("{\"op\":\"load\",\"error\":\"plug-in file ", 0), 0u) << result.out;
    EXPECT_EQ(result.out.find('\n'), result.out.size() - 1) << "one output line only";
}

TEST_F(ScriptRunner, GivesUnregisteredForHooksBeforeALoad) {
    const CommandRun result =
        RunLines("{\"op\": \"command\", \"command\": 2028}\n{\"op\": \"idle\"}\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "{\"op\":\"command\",\"registered\":false}\n"
                          "{\"op\":\"idle\",\"registered\":false}\n");
}

TEST_F(ScriptRunner, HostOpChangesTheHostSettings) {
    const CommandRun result =
        RunLines("{\"op\": \"host\", \"locale\": \"de_DE\", \"codepage\": \"cp1252\", "
                 "\"ui_suppressed\": 7, \"workspace\": false, \"report_result\": 9, \"scale\": 2, "
                 "\"missing_suites\": [\"QZGP Command Suite/1\"], "
                 "\"errors\": {\"enable_command\": 4}, \"throws\": {\"number_text\": \"boom\"}}\n");
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "{\"op\":\"host\"}\n");
    // The script's host stays as the script left it until the next run resets it.
    const qzhost::HostControls& host = qzhost::HostControls::Get();
    EXPECT_EQ(host.Locale(), "de_DE");
    EXPECT_EQ(host.Codepage(), "cp1252");
    EXPECT_EQ(host.UISuppressed(), 7);
    EXPECT_FALSE(host.WorkspaceExists());
    EXPECT_EQ(host.UIScale(), 2.0);
    EXPECT_TRUE(host.IsSuiteMissing("QZGP Command Suite", 1));
    EXPECT_FALSE(host.IsSuiteMissing("QZGP Command Suite", 2));
    EXPECT_EQ(host.InjectedError("enable_command"), 4);
    EXPECT_THROW(host.ThrowIfInjected("number_text"), std::runtime_error);
}

TEST_F(ScriptRunner, HostOpSetsUpdateSuppressionAndTheAlertFlags) {
    const CommandRun result = RunLines("{\"op\": \"host\", \"update_suppressed\": true, "
                                       "\"alerts\": [false, true, false, true]}\n");
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_TRUE(qzhost::HostControls::Get().UpdateSuppressed());
    EXPECT_EQ(G_msg1_redB, 0);
    EXPECT_EQ(G_msg2_redB, 1);
    EXPECT_EQ(G_msg3_redB, 0);
    EXPECT_EQ(G_msg4_redB, 1);
}

TEST_F(ScriptRunner, HostOpRefusesAlertListsOfAnotherLength) {
    const CommandRun result = RunLines("{\"op\": \"host\", \"alerts\": [true, true, true]}\n");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out,
              "{\"op\":\"host\",\"error\":\"\\\"alerts\\\" must be a list of 4 bools\"}\n");
}

TEST_F(ScriptRunner, HostOpWithABadlyShapedSettingChangesNothing) {
    const CommandRun result =
        RunLines("{\"op\": \"host\", \"ui_suppressed\": 1, \"workspace\": 5}\n");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out,
              "{\"op\":\"host\",\"error\":\"\\\"workspace\\\" must be true or false\"}\n");
    EXPECT_EQ(qzhost::HostControls::Get().UISuppressed(), 0);
}

TEST_F(ScriptRunner, HostOpRefusesAScaleThatIsNotPositive) {
    EXPECT_EQ(RunLines("{\"op\": \"host\", \"scale\": 0}\n").status, 2);
    EXPECT_EQ(RunLines("{\"op\": \"host\", \"scale\": \"inf\"}\n").status, 2);
    EXPECT_EQ(RunLines("{\"op\": \"host\", \"scale\": \"nan\"}\n").status, 2);
}

TEST_F(ScriptRunner, HostOpRemovesAnInjectedThrowWithNull) {
    const CommandRun result =
        RunLines("{\"op\": \"host\", \"throws\": {\"number_text\": \"boom\"}}\n"
                 "{\"op\": \"host\", \"throws\": {\"number_text\": null}}\n");
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_NO_THROW(qzhost::HostControls::Get().ThrowIfInjected("number_text"));
}

TEST_F(ScriptRunner, RunMainReportsAnEmptyQueue) {
    const CommandRun result = RunLines("{\"op\": \"run_main\"}\n");
    EXPECT_EQ(result.out, "{\"op\":\"run_main\",\"ran\":0,\"thrown\":[]}\n");
}

TEST_F(ScriptRunner, WorkspaceOpWithoutAPanelReportsNoTab) {
    const CommandRun result = RunLines("{\"op\": \"workspace\", \"action\": \"open\"}\n"
                                       "{\"op\": \"workspace\", \"action\": \"minimise\"}\n");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out.substr(0, result.out.find('\n') + 1),
              "{\"op\":\"workspace\",\"panel\":false,\"shown\":false,\"front\":false,"
              "\"stacked\":false,\"visible\":false}\n");
}

} // namespace
