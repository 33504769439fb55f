#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include "BuildPaths.h"
#include "CommandRun.h"
#include "ResourceCommand.h"
#include "qzhost/PropertyList.h"

namespace {

using qzhost::commands::RunResourceCommand;
using ::testing::HasSubstr;

using qztest::CommandRun;

CommandRun Resource(const std::string& library, const std::string& type, const std::string& name) {
    std::ostringstream out;
    std::ostringstream err;
    const int status = RunResourceCommand(library, type, name, out, err);
    return {status, out.str(), err.str()};
}

std::string FileText(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

TEST(ResourceCommand, WritesTheResourceBytesAndNothingElse) {
    const CommandRun run = Resource(QZ_FIXTURE_PLUGIN, "XML", "Fixture_Layout");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, FileText(QZ_FIXTURE_LAYOUT_FILE));
    EXPECT_EQ(run.err, "");
}

TEST(ResourceCommand, TypeAndNameMatchWithoutRegardToCase) {
    const CommandRun run = Resource(QZ_FIXTURE_PLUGIN, "xml", "FIXTURE_LAYOUT");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, FileText(QZ_FIXTURE_LAYOUT_FILE));
}

TEST(ResourceCommand, WritesBinaryPropertyListUnchanged) {
    const CommandRun run = Resource(QZ_FIXTURE_PLUGIN, "PRPL", "16000");
    ASSERT_EQ(run.status, 0) << run.err;
    const std::vector<std::uint8_t> bytes(run.out.begin(), run.out.end());
    const qzhost::PropertyList list = qzhost::DecodePropertyList(bytes);
    ASSERT_NE(list.Find("8664"), nullptr);
    EXPECT_EQ(std::string(list.Find("8664")->data.begin(), list.Find("8664")->data.end()),
              std::string("GPMain_Fixture\0", 15) + '\0');
    EXPECT_EQ(qzhost::EncodePropertyList(list), bytes);
}

TEST(ResourceCommand, MissingResourceIsABadArgument) {
    const CommandRun run = Resource(QZ_FIXTURE_PLUGIN, "XML", "NO_SUCH_LAYOUT");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, std::string("qzhost resource: '") + QZ_FIXTURE_PLUGIN +
                           "' has no resource XML 'NO_SUCH_LAYOUT'\n");
}

TEST(ResourceCommand, MissingFileIsABadArgument) {
    const CommandRun run = Resource("/no/such/library.so", "PRPL", "16000");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.err, "qzhost resource: no such file '/no/such/library.so'\n");
}

TEST(ResourceCommand, FileThatIsNotALibraryIsAHostFailure) {
    const std::string text = QZ_FIXTURE_LAYOUT_FILE;
    const CommandRun run = Resource(text, "PRPL", "16000");
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "qzhost resource: ELF file '" + text +
                           "': not an ELF file (no ELF magic at offset 0)\n");
}

TEST(ResourceCommand, ParsesItsArgumentsAsASubcommand) {
    CLI::App app;
    int status = -1;
    qzhost::commands::AddResourceCommand(app, status);
    // CLI11 takes a vector of arguments in reverse order.
    std::vector<std::string> reversed = {"NO_SUCH_LAYOUT", "XML", "/no/such/library.so",
                                         "resource"};
    testing::internal::CaptureStderr();
    app.parse(reversed);
    const std::string err = testing::internal::GetCapturedStderr();
    EXPECT_EQ(status, 2);
    EXPECT_EQ(err, "qzhost resource: no such file '/no/such/library.so'\n");
}

TEST(ResourceCommand, NeedsAllThreeArguments) {
    CLI::App app;
    int status = -1;
    qzhost::commands::AddResourceCommand(app, status);
    EXPECT_THROW(app.parse(std::vector<std::string>{"PRPL", "lib.so", "resource"}),
                 CLI::RequiredError);
    EXPECT_EQ(status, -1);
}

} // namespace
