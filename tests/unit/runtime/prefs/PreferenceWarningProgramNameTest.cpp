// A preference file that cannot be parsed is reported on one line under the name of the
// program that runs: the name it gave the runtime, else the name it was started under.
#include <sstream>
#include <string>

#include "PrefsTestSupport.h"
#include "qzhost/ProgramName.h"

namespace prefstest {
namespace {

namespace fs = std::filesystem;

class PreferenceWarningProgramName : public PrefsTest {
protected:
    void TearDown() override {
        qzhost::SetProgramName("");
        PrefsTest::TearDown();
    }

    /// What the runtime prints after opening a corrupt preference file.
    std::string PrintedForCorruptFile() {
        WriteFile(file_, "[Misc Section]\nInfo Palette Pixel Display 7\n");
        qzhost::SetPreferenceFile(file_);
        std::ostringstream out;
        qzhost::HostControls::Get().PrintWarnings(out);
        return out.str();
    }

    const fs::path file_ = folder_ / "prefs.txt";
};

TEST_F(PreferenceWarningProgramName, TheViewerNamesItself) {
    qzhost::SetProgramName("qzview");
    const std::string printed = PrintedForCorruptFile();
    EXPECT_EQ(printed.rfind("qzview: warning: the preference file " + file_.string() +
                                " cannot be read (line 2",
                            0),
              0u)
        << printed;
    EXPECT_NE(printed.find("moved to " + file_.string() + ".corrupt"), std::string::npos)
        << printed;
    EXPECT_EQ(printed.find("qzhost"), std::string::npos) << printed;
    // One line, and the warning is printed once only.
    EXPECT_EQ(printed.find('\n'), printed.size() - 1) << printed;
    EXPECT_TRUE(qzhost::HostControls::Get().TakeWarnings().empty());
}

TEST_F(PreferenceWarningProgramName, TheScriptRunnerNamesItself) {
    qzhost::SetProgramName("qzhost");
    const std::string printed = PrintedForCorruptFile();
    EXPECT_EQ(printed.rfind("qzhost: warning: the preference file " + file_.string(), 0), 0u)
        << printed;
}

TEST_F(PreferenceWarningProgramName, WithoutAGivenNameTheNameItWasStartedUnderIsUsed) {
    qzhost::SetProgramName("qzview");
    qzhost::SetProgramName("");
    EXPECT_EQ(qzhost::ProgramName(), "test_runtime");
    const std::string printed = PrintedForCorruptFile();
    EXPECT_EQ(printed.rfind("test_runtime: warning: the preference file ", 0), 0u) << printed;
}

TEST_F(PreferenceWarningProgramName, NoWarningPrintsNothing) {
    qzhost::SetProgramName("qzview");
    WriteFile(file_, "[Misc Section]\nInfo Palette Pixel Display = 7\n");
    qzhost::SetPreferenceFile(file_);
    std::ostringstream out;
    qzhost::HostControls::Get().PrintWarnings(out);
    EXPECT_EQ(out.str(), "");
}

} // namespace
} // namespace prefstest
