// The host settings and ops behind the pixel readout: the project, the monitor profile, the
// preference file and shader fills, and the preference file private to each run.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <stdlib.h>

#include "ScriptRun.h"
#include "TempFolder.h"
#include "host/PREF_Preferences.h"
#include "qzhost/HostControls.h"
#include "qzhost/MainLoop.h"
#include "qzhost/MonitorProfile.h"
#include "qzhost/PreferenceFile.h"
#include "qzhost/ToolkitSettings.h"
#include "script/ScriptRunner.h"
#include "script/ScriptSession.h"

namespace {

namespace fs = std::filesystem;

using qztest::CommandRun;

CommandRun RunText(const std::string& script) {
    return qztest::RunScriptText(script);
}

class HostServiceSettings : public ::testing::Test {
protected:
    void SetUp() override { qzhost::MainLoop::Get().AdoptCurrentThread(); }
    void TearDown() override {
        qzhost::HostControls::Get().Reset();
        qzhost::ToolkitSettings::Get().Reset();
    }
    qztest::TempFolder temp_{"script-prefs"};
    fs::path folder_ = temp_.Path();
};

TEST_F(HostServiceSettings, ProjectSettingSetsTheDepthOrClosesTheProject) {
    CommandRun result = RunText("{\"op\": \"host\", \"project\": {\"depth\": 2}}\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(qzhost::HostControls::Get().ProjectDepth(), std::optional<std::int8_t>(2));
    result = RunText("{\"op\": \"host\", \"project\": null}\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(qzhost::HostControls::Get().ProjectDepth(), std::nullopt);
    result = RunText("{\"op\": \"host\", \"project\": {\"depth\": 128}}\n");
    EXPECT_EQ(result.status, 2);
}

TEST_F(HostServiceSettings, ShadersSettingIsTheSuppliersAnswer) {
    EXPECT_EQ(RunText("{\"op\": \"host\", \"shaders\": true}\n").status, 0);
    EXPECT_TRUE(qzhost::ToolkitSettings::Get().ShaderFills());
    EXPECT_EQ(RunText("{\"op\": \"host\", \"shaders\": false}\n").status, 0);
    EXPECT_FALSE(qzhost::ToolkitSettings::Get().ShaderFills());
}

TEST_F(HostServiceSettings, PrefsSettingNamesTheFileThatThePrefsOpReads) {
    const fs::path file = folder_ / "prefs.txt";
    std::ofstream(file) << "[Misc Section]\nInfo Palette Pixel Display = 6\n";
    const CommandRun result =
        RunText("{\"op\": \"host\", \"prefs\": \"" + file.string() + "\"}\n{\"op\": \"prefs\"}\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "{\"op\":\"host\"}\n{\"op\":\"prefs\",\"exists\":true,\"value\":6}\n");
}

TEST_F(HostServiceSettings, PrefsOpGivesTextThatIsNoNumberAsItIs) {
    const fs::path file = folder_ / "prefs.txt";
    std::ofstream(file) << "[Misc Section]\nInfo Palette Pixel Display = HSB\n";
    const CommandRun result =
        RunText("{\"op\": \"host\", \"prefs\": \"" + file.string() + "\"}\n{\"op\": \"prefs\"}\n");
    EXPECT_EQ(result.out,
              "{\"op\":\"host\"}\n{\"op\":\"prefs\",\"exists\":true,\"value\":\"HSB\"}\n");
}

TEST_F(HostServiceSettings, ACorruptPrefsFileIsSetAsideWithAWarning) {
    const fs::path file = folder_ / "prefs.txt";
    std::ofstream(file) << "not a preference file\n";
    testing::internal::CaptureStderr();
    const CommandRun result =
        RunText("{\"op\": \"host\", \"prefs\": \"" + file.string() + "\"}\n{\"op\": \"prefs\"}\n");
    const std::string diagnostics = testing::internal::GetCapturedStderr();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out,
              "{\"op\":\"host\"}\n{\"op\":\"prefs\",\"exists\":false,\"value\":null}\n");
    EXPECT_NE(diagnostics.find("warning"), std::string::npos) << diagnostics;
    EXPECT_NE(diagnostics.find("prefs.txt.corrupt"), std::string::npos) << diagnostics;
    EXPECT_TRUE(fs::exists(fs::path(file.string() + ".corrupt")));
}

TEST_F(HostServiceSettings, EachRunHasAPreferenceFileOfItsOwn) {
    fs::path first;
    {
        qzhost::script::ScriptSession session("no-such-plugin.so");
        first = qzhost::PreferenceFilePath();
        ASSERT_EQ(PREF_SetTextPrefLong(PREF_GetPrefHandle(0), "Misc Section",
                                       "Info Palette Pixel Display", 7),
                  QZ_Err_NONE);
        EXPECT_EQ(qzhost::ReadStoredPreference("Misc Section", "Info Palette Pixel Display"), "7");
    }
    qzhost::script::ScriptSession session("no-such-plugin.so");
    const fs::path second = qzhost::PreferenceFilePath();
    EXPECT_NE(first, second);
    EXPECT_FALSE(fs::exists(first));
    EXPECT_EQ(qzhost::ReadStoredPreference("Misc Section", "Info Palette Pixel Display"),
              std::nullopt);
    const CommandRun result = RunText("{\"op\": \"prefs\"}\n");
    EXPECT_EQ(result.out, "{\"op\":\"prefs\",\"exists\":false,\"value\":null}\n");
}

TEST_F(HostServiceSettings, AMonitorProfileThatCannotBeReadStopsTheScript) {
    const CommandRun result =
        RunText("{\"op\": \"host\", \"monitor\": \"" + (folder_ / "none.icc").string() +
                "\"}\n{\"op\": \"prefs\"}\n");
    EXPECT_EQ(result.status, 2);
    EXPECT_NE(result.out.find("none.icc"), std::string::npos) << result.out;
    EXPECT_EQ(result.out.find("\"prefs\""), std::string::npos);
    EXPECT_EQ(qzhost::MonitorProfile(), std::nullopt);
}

} // namespace
