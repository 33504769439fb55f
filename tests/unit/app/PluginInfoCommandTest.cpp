#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "BuildPaths.h"
#include "CommandRun.h"
#include "PluginInfoCommand.h"

namespace {

using nlohmann::json;
using qzhost::commands::RunPluginInfoCommand;
using ::testing::HasSubstr;

using qztest::CommandRun;

CommandRun PluginInfo(const std::string& library, bool asJson) {
    std::ostringstream out;
    std::ostringstream err;
    const int status = RunPluginInfoCommand(library, asJson, out, err);
    return {status, out.str(), err.str()};
}

TEST(PluginInfoCommand, PrintsOnePropertyPerLine) {
    const CommandRun run = PluginInfo(QZ_FIXTURE_PLUGIN, false);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, "kind  QZgx\n"
                       "name  \"$$$/QZ/QZGP/Name/Fixture=Fixture\"\n"
                       "catg  \"Ignored\"\n"
                       "vers  0x00020001\n"
                       "8664  GPMain_Fixture\n"
                       "qzFL  0x00000000\n"
                       "qzRD  0x00000000\n");
}

TEST(PluginInfoCommand, PrintsJsonThatDescribesEachPropertyAsAManifestWould) {
    const CommandRun run = PluginInfo(QZ_FIXTURE_PLUGIN, true);
    ASSERT_EQ(run.status, 0) << run.err;
    const json info = json::parse(run.out);
    EXPECT_EQ(info["format_version"], 1);
    EXPECT_EQ(info["kind"], "QZgx");
    EXPECT_EQ(info["entry_point"], "GPMain_Fixture");
    ASSERT_EQ(info["properties"].size(), 7u);
    EXPECT_EQ(
        info["properties"][0],
        json({{"vendor", "XPLG"}, {"key", "kind"}, {"id", 0}, {"length", 4}, {"fourcc", "QZgx"}}));
    EXPECT_EQ(info["properties"][1]["pascal"], "$$$/QZ/QZGP/Name/Fixture=Fixture");
    EXPECT_EQ(info["properties"][1]["length"], 36);
    EXPECT_EQ(info["properties"][3]["u32"], 0x00020001);
    EXPECT_EQ(info["properties"][4]["cstring"], "GPMain_Fixture");
    EXPECT_EQ(info["properties"][4]["length"], 16);
}

TEST(PluginInfoCommand, UnusualValuesAreShownAsHexOrEscaped) {
    qzhost::PluginInfo info;
    info.properties.formatVersion = 1;
    info.properties.properties.push_back({"ABCD", "blob", 3, {1, 2, 0xAB, 0, 5, 6, 7, 8}});
    info.properties.properties.push_back({"XPLG", "name", 0, {3, 'a', '"', '\n'}});
    info.properties.properties.push_back({"XPLG", "8664", 0, {'a', 0, 'b', 0, 0, 0, 0, 0}});
    EXPECT_EQ(qzhost::commands::PluginInfoText(info),
              "blob  01 02 ab 00 05 06 07 08  (vendor ABCD, id 3)\n"
              "name  \"a\\\"\\x0a\"\n"
              "8664  61 00 62 00 00 00 00 00\n");
    const json described = qzhost::commands::PluginInfoJson(info);
    EXPECT_EQ(described["properties"][0]["hex"], "01 02 ab 00 05 06 07 08");
    EXPECT_EQ(described["properties"][1]["pascal"], "a\"\n");
}

TEST(PluginInfoCommand, InvalidPluginIsAHostFailure) {
    const CommandRun run = PluginInfo(QZ_FIXTURE_WRONG_KIND, false);
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, std::string("qzhost plugin-info: plug-in file '") + QZ_FIXTURE_WRONG_KIND +
                           "': kind 'QZxx' is not a general plug-in (QZgx)\n");
    EXPECT_EQ(PluginInfo(QZ_FIXTURE_NO_PROPERTY_LIST, true).status, 3);
    EXPECT_EQ(PluginInfo(QZ_FIXTURE_LAYOUT_FILE, false).status, 3);
}

TEST(PluginInfoCommand, MissingFileIsABadArgument) {
    const CommandRun run = PluginInfo("/no/such/InfoPal.so", false);
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.err, "qzhost plugin-info: no such file '/no/such/InfoPal.so'\n");
}

TEST(PluginInfoCommand, ParsesItsArgumentsAsASubcommand) {
    CLI::App app;
    int status = -1;
    qzhost::commands::AddPluginInfoCommand(app, status);
    testing::internal::CaptureStdout();
    app.parse(std::vector<std::string>{"--json", QZ_FIXTURE_PLUGIN, "plugin-info"});
    const std::string out = testing::internal::GetCapturedStdout();
    EXPECT_EQ(status, 0);
    EXPECT_EQ(json::parse(out)["entry_point"], "GPMain_Fixture");
}

} // namespace
