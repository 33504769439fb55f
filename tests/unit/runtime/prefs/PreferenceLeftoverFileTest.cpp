// Opening the preference file removes the temporary files that its writers left behind
// (".<name>.tmp-" and six letters or digits, beside it), and nothing else: no other file
// of the folder, no temporary file of another preference file, nothing that merely looks
// like one.
#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include <sys/stat.h>

#include "PrefsTestSupport.h"

namespace prefstest {
namespace {

namespace fs = std::filesystem;

using PreferenceLeftoverFile = PrefsTest;

// What a writer killed in the middle of its write leaves: part of the file's text.
const char* const kPartOfAWrite = "# qzhost preferences\n[Misc Sec";

TEST_F(PreferenceLeftoverFile, TheFilesTemporaryFilesAreRemovedWhenItIsOpened) {
    const fs::path file = folder_ / "prefs.txt";
    WriteFile(file, "[Misc Section]\nInfo Palette Pixel Display = 4\n");
    for (const char* name : {".prefs.txt.tmp-Ab3xYz", ".prefs.txt.tmp-000000",
                             ".prefs.txt.tmp-zzzzzz", ".prefs.txt.tmp-ZZ9aa0"}) {
        WriteFile(folder_ / name, kPartOfAWrite);
    }
    WriteFile(folder_ / ".prefs.txt.tmp-empty0", "");

    qzhost::SetPreferenceFile(file);
    EXPECT_EQ(FilesIn(folder_), std::vector<std::string>{"prefs.txt"});
    EXPECT_EQ(Get(kSection, kKey), 4);
    EXPECT_TRUE(qzhost::HostControls::Get().TakeWarnings().empty());
}

TEST_F(PreferenceLeftoverFile, TheyAreRemovedAlsoWhenTheFileIsMissingAndMadeAnew) {
    // A writer killed before its first rename leaves only its temporary file.
    const fs::path file = folder_ / "prefs.txt";
    WriteFile(folder_ / ".prefs.txt.tmp-q1W2e3", kPartOfAWrite);

    qzhost::SetPreferenceFile(file);
    EXPECT_EQ(FilesIn(folder_), std::vector<std::string>{"prefs.txt"});
    EXPECT_FALSE(Exists(kSection, kKey));
}

TEST_F(PreferenceLeftoverFile, NamesThatOnlyLookLikeATemporaryFileAreLeftAlone) {
    const fs::path file = folder_ / "prefs.txt";
    const std::vector<std::string> lookalikes = {
        ".prefs.txt.tmp-",        // no random part
        ".prefs.txt.tmp-abcde",   // five characters
        ".prefs.txt.tmp-abcdefg", // seven
        ".prefs.txt.tmp-abc-ef",  // not only letters and digits
        ".prefs.txt.tmp-abc.ef",
        ".prefs.txt.tmp-abc_ef",
        ".prefs.txt.tmp-abcd\xc3\xa9", // six bytes, a letter beyond ASCII among them
        ".prefs.txt.tmp-abcdef~",      // a backup of one
        ".prefs.txt.tmp-abcdef.bak",
        "prefs.txt.tmp-abcdef", // no leading dot
        "..prefs.txt.tmp-abcdef",
        ".prefs.txt.TMP-abcdef", // another case
        ".Prefs.txt.tmp-abcdef",
        ".prefs.txt.tmp.abcdef",
        ".prefs.txt-tmp-abcdef",
        ".prefs.txttmp-abcdef",
        "prefs.txt.corrupt", // the store's own other files
        "prefs.txt.corrupt.1",
        "notes.txt", // and the user's
        ".prefs.txt",
    };
    for (const std::string& name : lookalikes) {
        WriteFile(folder_ / name, "kept: " + name);
    }
    std::vector<std::string> expected = lookalikes;
    expected.push_back("prefs.txt");
    std::sort(expected.begin(), expected.end());

    qzhost::SetPreferenceFile(file);
    EXPECT_EQ(FilesIn(folder_), expected);
    for (const std::string& name : lookalikes) {
        EXPECT_EQ(ReadFile(folder_ / name), "kept: " + name);
    }
}

TEST_F(PreferenceLeftoverFile, AnotherPreferenceFilesTemporaryFilesAreLeftAlone) {
    const std::vector<std::string> others = {
        ".other.txt.tmp-abcdef",            // of other.txt
        ".prefs.tmp-abcdef",                // of prefs
        ".prefs.txt.old.tmp-abcdef",        // of prefs.txt.old
        ".prefs.txt.tmp-abcdef.tmp-ghijkl", // of prefs.txt.tmp-abcdef
        "..prefs.txt.tmp-abcdef",           // of .prefs.txt
    };
    for (const std::string& name : others) {
        WriteFile(folder_ / name, kPartOfAWrite);
    }
    WriteFile(folder_ / ".prefs.txt.tmp-Mine01", kPartOfAWrite);
    // Those of files named prefs.txt in other folders: one inside this file's folder, one
    // elsewhere.
    fs::create_directories(folder_ / "inner");
    WriteFile(folder_ / "inner" / ".prefs.txt.tmp-abcdef", kPartOfAWrite);
    qztest::TempFolder elsewhere("prefs-test-elsewhere");
    WriteFile(elsewhere.Path() / ".prefs.txt.tmp-abcdef", kPartOfAWrite);

    qzhost::SetPreferenceFile(folder_ / "prefs.txt");
    std::vector<std::string> expected = others;
    expected.push_back("inner");
    expected.push_back("prefs.txt");
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(FilesIn(folder_), expected); // its own went, and only that
    EXPECT_EQ(FilesIn(folder_ / "inner"), std::vector<std::string>{".prefs.txt.tmp-abcdef"});
    EXPECT_EQ(FilesIn(elsewhere.Path()), std::vector<std::string>{".prefs.txt.tmp-abcdef"});
    for (const std::string& name : others) {
        EXPECT_EQ(ReadFile(folder_ / name), kPartOfAWrite) << name;
    }

    // Opening other.txt removes its own only.
    qzhost::SetPreferenceFile(folder_ / "other.txt");
    expected.erase(std::find(expected.begin(), expected.end(), ".other.txt.tmp-abcdef"));
    expected.push_back("other.txt");
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(FilesIn(folder_), expected);
}

TEST_F(PreferenceLeftoverFile, ALinkAFolderOrAPipeOfThatNameIsLeftAlone) {
    const fs::path file = folder_ / "prefs.txt";
    // A link to a file elsewhere: neither the link nor its target goes.
    fs::create_directories(folder_ / "elsewhere");
    const fs::path target = folder_ / "elsewhere" / "target.txt";
    WriteFile(target, "target");
    fs::create_symlink(target, folder_ / ".prefs.txt.tmp-link01");
    fs::create_symlink(folder_ / "missing", folder_ / ".prefs.txt.tmp-link02");
    // A folder, with something in it.
    fs::create_directories(folder_ / ".prefs.txt.tmp-fold01");
    WriteFile(folder_ / ".prefs.txt.tmp-fold01" / "inside.txt", "inside");
    // A named pipe, which must not hold up the opening either.
    ASSERT_EQ(::mkfifo((folder_ / ".prefs.txt.tmp-pipe01").c_str(), 0600), 0);

    qzhost::SetPreferenceFile(file);
    EXPECT_EQ(FilesIn(folder_),
              (std::vector<std::string>{".prefs.txt.tmp-fold01", ".prefs.txt.tmp-link01",
                                        ".prefs.txt.tmp-link02", ".prefs.txt.tmp-pipe01",
                                        "elsewhere", "prefs.txt"}));
    EXPECT_EQ(ReadFile(target), "target");
    EXPECT_EQ(ReadFile(folder_ / ".prefs.txt.tmp-fold01" / "inside.txt"), "inside");
}

TEST_F(PreferenceLeftoverFile, AWriteLeavesNoTemporaryFileBehind) {
    const fs::path file = folder_ / "prefs.txt";
    qzhost::SetPreferenceFile(file);
    for (long i = 0; i < 20; ++i) {
        ASSERT_EQ(PREF_SetTextPrefLong(Store(), kSection, kKey, i), QZ_Err_NONE);
    }
    EXPECT_EQ(FilesIn(folder_), std::vector<std::string>{"prefs.txt"});
}

} // namespace
} // namespace prefstest
