// The resource and plug-in-info commands through the qzhost program itself, on the Info
// palette library of this build. Built only when the build has both.
#if defined(QZ_QZHOST_PROGRAM) && defined(QZ_INFOPAL_LIBRARY)

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdio>
#include <string>
#include <vector>

#include "BuildPaths.h"
#include "InfoPalPropertyListBytes.h"

namespace {

struct ProgramRun {
    int status;
    std::string out;
};

// Runs the qzhost program with `arguments` (already quoted for the shell); standard
// error is discarded.
ProgramRun Qzhost(const std::string& arguments) {
    const std::string command =
        std::string("'") + QZ_QZHOST_PROGRAM + "' " + arguments + " 2>/dev/null";
    FILE* pipe = ::popen(command.c_str(), "r");
    EXPECT_NE(pipe, nullptr);
    std::string out;
    char buffer[4096];
    for (std::size_t got; (got = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) {
        out.append(buffer, got);
    }
    const int status = ::pclose(pipe);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, out};
}

std::string Quoted(const std::string& path) {
    return "'" + path + "'";
}

TEST(QzhostProgram, InfoPalLibraryCarriesItsPropertyListByteForByte) {
    const ProgramRun run = Qzhost("resource " + Quoted(QZ_INFOPAL_LIBRARY) + " PRPL 16000");
    ASSERT_EQ(run.status, 0);
    const std::vector<std::uint8_t> bytes(run.out.begin(), run.out.end());
    EXPECT_EQ(bytes.size(), 206u);
    EXPECT_EQ(bytes, qztest::InfoPalPropertyListBytes());
}

TEST(QzhostProgram, PluginInfoShowsTheInfoPalPropertyList) {
    const ProgramRun run = Qzhost("plugin-info " + Quoted(QZ_INFOPAL_LIBRARY));
    ASSERT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "kind  QZgx\n"
                       "name  \"$$$/QZ/QZGP/Name/InfoPalette=Info Palette\"\n"
                       "catg  \"Ignored\"\n"
                       "vers  0x00010000\n"
                       "8664  GPMain_InfoPal\n"
                       "qzFL  0x00000000\n"
                       "qzRD  0x00000000\n");
}

TEST(QzhostProgram, ExitStatusTellsBadArgumentsFromInvalidFiles) {
    EXPECT_EQ(Qzhost("resource " + Quoted(QZ_INFOPAL_LIBRARY) + " PRPL 16001").status, 2);
    EXPECT_EQ(Qzhost("resource /no/such/file.so PRPL 16000").status, 2);
    EXPECT_EQ(Qzhost("plugin-info " + Quoted(QZ_FIXTURE_WRONG_KIND)).status, 3);
    EXPECT_EQ(Qzhost("plugin-info " + Quoted(QZ_FIXTURE_LAYOUT_FILE)).status, 3);
}

} // namespace

#endif
