// A preference file that cannot be parsed is set aside and reported once; one that cannot
// be written gives the write error and stays as it was.
#include <filesystem>
#include <string>

#include <sys/wait.h>
#include <unistd.h>

#include "PrefsTestSupport.h"

namespace prefstest {
namespace {

namespace fs = std::filesystem;

using PreferenceFileFailure = PrefsTest;

const char* const kCorrupt = "[Misc Section]\nInfo Palette Pixel Display 7\n";

TEST_F(PreferenceFileFailure, AnUnparsableFileIsMovedAsideAndTheStoreStartsEmpty) {
    const fs::path file = folder_ / "prefs.txt";
    WriteFile(file, kCorrupt);
    qzhost::SetPreferenceFile(file);

    EXPECT_EQ(ReadFile(folder_ / "prefs.txt.corrupt"), kCorrupt);
    EXPECT_EQ(ReadFile(file), "# qzhost preferences\n");
    EXPECT_FALSE(Exists(kSection, kKey));
    EXPECT_EQ(Get(kSection, kKey, 0), 0);

    const std::vector<std::string> warnings = qzhost::HostControls::Get().TakeWarnings();
    ASSERT_EQ(warnings.size(), 1u);
    EXPECT_NE(warnings[0].find(file.string()), std::string::npos) << warnings[0];
    EXPECT_NE(warnings[0].find("prefs.txt.corrupt"), std::string::npos) << warnings[0];
    EXPECT_NE(warnings[0].find("line 2"), std::string::npos) << warnings[0];
    // Not a report of the plug-in's exceptions.
    EXPECT_TRUE(qzhost::HostControls::Get().Reported().empty());
}

TEST_F(PreferenceFileFailure, TheCorruptFileIsReportedOnceOnly) {
    const fs::path file = folder_ / "prefs.txt";
    WriteFile(file, kCorrupt);
    qzhost::SetPreferenceFile(file);
    EXPECT_EQ(qzhost::HostControls::Get().TakeWarnings().size(), 1u);

    ASSERT_EQ(PREF_SetTextPrefLong(Store(), kSection, kKey, 3), QZ_Err_NONE);
    qzhost::SetPreferenceFile(file); // the new file reads without a problem
    EXPECT_EQ(Get(kSection, kKey), 3);
    EXPECT_TRUE(qzhost::HostControls::Get().TakeWarnings().empty());
    EXPECT_EQ(FilesIn(folder_), (std::vector<std::string>{"prefs.txt", "prefs.txt.corrupt"}));
}

TEST_F(PreferenceFileFailure, AnOlderCorruptFileIsNeverOverwritten) {
    const fs::path file = folder_ / "prefs.txt";
    WriteFile(folder_ / "prefs.txt.corrupt", "older");
    WriteFile(file, "no section = 1\n");
    qzhost::SetPreferenceFile(file);
    EXPECT_EQ(ReadFile(folder_ / "prefs.txt.corrupt"), "older");
    EXPECT_EQ(ReadFile(folder_ / "prefs.txt.corrupt.1"), "no section = 1\n");
    EXPECT_EQ(qzhost::HostControls::Get().TakeWarnings().size(), 1u);
}

TEST_F(PreferenceFileFailure, EachKindOfBrokenLineMakesTheFileUnreadable) {
    const std::vector<std::string> broken = {
        "key = 1\n",                                    // an entry before any section
        "[Misc Section]\nno equals sign\n",             // no "="
        "[Misc Section\nkey = 1\n",                     // unfinished section line
        "[Misc Section]\nkey = \\q\n",                  // unknown escape
        "[Misc Section]\nkey = \\x4\n",                 // short \x escape
        "[Misc Section]\nkey = 1\\\n",                  // backslash at the end
        "[Misc Section]\nkey = 1\nkey = 2\n",           // a key twice
        std::string("[Misc Section]\nkey = 1\0\n", 24), // a NUL byte
        "[Misc Section]\nkey = \\x00\n",                // an escaped NUL byte
        "[Misc Section\\]\nkey = 1\n",                  // the closing bracket escaped
    };
    for (std::size_t i = 0; i < broken.size(); ++i) {
        const fs::path file = folder_ / ("broken" + std::to_string(i) + ".txt");
        WriteFile(file, broken[i]);
        qzhost::SetPreferenceFile(file);
        EXPECT_EQ(qzhost::HostControls::Get().TakeWarnings().size(), 1u) << broken[i];
        EXPECT_EQ(ReadFile(fs::path(file.string() + ".corrupt")), broken[i]);
    }
}

// Makes `folder` unwritable for the process that runs `body`, and returns that process's
// exit status. A process with the power to write anywhere (root) runs the body in a child
// that gives that power up first.
template <class Body>
int RunWithoutWriteAccess(const fs::path& folder, Body body) {
    const pid_t child = ::fork();
    if (child == 0) {
        if (::geteuid() == 0) {
            // "nobody" may read the folder and its files but write nothing in it.
            fs::permissions(folder,
                            fs::perms::owner_all | fs::perms::others_read | fs::perms::others_exec);
            if (::setgid(65534) != 0 || ::setuid(65534) != 0) {
                ::_exit(100);
            }
        } else {
            fs::permissions(folder, fs::perms::owner_read | fs::perms::owner_exec);
        }
        ::_exit(body());
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    fs::permissions(folder, fs::perms::owner_all);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 200;
}

TEST_F(PreferenceFileFailure, AnUnwritableFolderGivesTheWriteErrorAndKeepsTheOldFile) {
    const fs::path file = folder_ / "prefs.txt";
    qzhost::SetPreferenceFile(file);
    ASSERT_EQ(PREF_SetTextPrefLong(Store(), kSection, kKey, 3), QZ_Err_NONE);
    fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write | fs::perms::others_read);
    const std::string before = ReadFile(file);

    const int status = RunWithoutWriteAccess(folder_, [&] {
        PREF_Handle store = PREF_GetPrefHandle(PREF_TYPE_TEXT);
        try {
            qzhost::SetPreferenceFile(file); // reading still works
        } catch (...) {
            return 1;
        }
        if (PREF_SetTextPrefLong(store, kSection, kKey, 5) != PREF_Err_WRITE_FAILED) {
            return 2;
        }
        long value = 0;
        if (PREF_GetTextPrefLong(store, kSection, kKey, 0, &value) != QZ_Err_NONE || value != 3) {
            return 3; // the store keeps what the file holds
        }
        return 0;
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(ReadFile(file), before);
    EXPECT_EQ(FilesIn(folder_), std::vector<std::string>{"prefs.txt"}); // no temporary left
}

TEST_F(PreferenceFileFailure, AFileThatCannotBeCreatedIsAnError) {
    const fs::path file = folder_ / "sub" / "prefs.txt";
    const int status = RunWithoutWriteAccess(folder_, [&] {
        try {
            qzhost::SetPreferenceFile(file);
        } catch (const std::runtime_error& error) {
            return std::string(error.what()).find(file.string()) != std::string::npos ? 0 : 2;
        }
        return 1;
    });
    EXPECT_EQ(status, 0);
    EXPECT_FALSE(fs::exists(file));
}

} // namespace
} // namespace prefstest
