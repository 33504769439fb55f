// The host's text preference store: values survive in the file, absent keys give the
// default, text that is no whole number is refused, and injected errors replace results.
#include <climits>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "PrefsTestSupport.h"

namespace prefstest {
namespace {

namespace fs = std::filesystem;

using PreferenceStore = PrefsTest;

TEST_F(PreferenceStore, TypeZeroIsTheTextStoreAndOtherTypesHaveNone) {
    EXPECT_NE(PREF_GetPrefHandle(0), nullptr);
    EXPECT_EQ(PREF_GetPrefHandle(0), PREF_GetPrefHandle(0));
    EXPECT_EQ(PREF_GetPrefHandle(1), nullptr);
    EXPECT_EQ(PREF_GetPrefHandle(-1), nullptr);
    EXPECT_EQ(PREF_GetPrefHandle(7), nullptr);
}

TEST_F(PreferenceStore, AValueReadsBackAndIsInTheFileAtOnce) {
    const fs::path file = folder_ / "prefs.txt";
    qzhost::SetPreferenceFile(file);
    ASSERT_EQ(PREF_SetTextPrefLong(Store(), kSection, kKey, 7), QZ_Err_NONE);
    EXPECT_TRUE(Exists(kSection, kKey));
    EXPECT_EQ(Get(kSection, kKey, 0), 7);
    EXPECT_EQ(qzhost::ReadStoredPreference(kSection, kKey), "7");
    EXPECT_EQ(ReadFile(file),
              "# qzhost preferences\n[Misc Section]\nInfo Palette Pixel Display = 7\n");
}

TEST_F(PreferenceStore, ValuesSurviveReopeningTheFile) {
    const fs::path file = folder_ / "prefs.txt";
    qzhost::SetPreferenceFile(file);
    ASSERT_EQ(PREF_SetTextPrefLong(Store(), kSection, kKey, 6), QZ_Err_NONE);
    ASSERT_EQ(PREF_SetTextPrefLong(Store(), "Other", "Negative", -42), QZ_Err_NONE);
    ASSERT_EQ(PREF_SetTextPrefLong(Store(), "Other", "Largest", LONG_MAX), QZ_Err_NONE);
    ASSERT_EQ(PREF_SetTextPrefLong(Store(), "Other", "Smallest", LONG_MIN), QZ_Err_NONE);

    qzhost::HostControls::Get().Reset(); // forgets everything in memory
    EXPECT_FALSE(Exists(kSection, kKey));
    qzhost::SetPreferenceFile(file);
    EXPECT_EQ(Get(kSection, kKey), 6);
    EXPECT_EQ(Get("Other", "Negative"), -42);
    EXPECT_EQ(Get("Other", "Largest"), LONG_MAX);
    EXPECT_EQ(Get("Other", "Smallest"), LONG_MIN);
    EXPECT_TRUE(qzhost::HostControls::Get().TakeWarnings().empty());
}

TEST_F(PreferenceStore, ALaterValueReplacesTheEarlierOne) {
    qzhost::SetPreferenceFile(folder_ / "prefs.txt");
    ASSERT_EQ(PREF_SetTextPrefLong(Store(), kSection, kKey, 7), QZ_Err_NONE);
    ASSERT_EQ(PREF_SetTextPrefLong(Store(), kSection, kKey, 3), QZ_Err_NONE);
    EXPECT_EQ(Get(kSection, kKey), 3);
    EXPECT_EQ(qzhost::ReadStoredPreference(kSection, kKey), "3");
}

TEST_F(PreferenceStore, AnAbsentKeyGivesTheDefaultAndDoesNotExist) {
    qzhost::SetPreferenceFile(folder_ / "prefs.txt");
    ASSERT_EQ(PREF_SetTextPrefLong(Store(), kSection, "Another Key", 1), QZ_Err_NONE);
    EXPECT_FALSE(Exists(kSection, kKey));
    EXPECT_FALSE(Exists("No Such Section", kKey));
    EXPECT_EQ(Get(kSection, kKey, 0), 0);
    EXPECT_EQ(Get(kSection, kKey, 65535), 65535);
    EXPECT_EQ(qzhost::ReadStoredPreference(kSection, kKey), std::nullopt);
}

TEST_F(PreferenceStore, KeysAndSectionsAreCaseSensitive) {
    qzhost::SetPreferenceFile(folder_ / "prefs.txt");
    ASSERT_EQ(PREF_SetTextPrefLong(Store(), kSection, kKey, 2), QZ_Err_NONE);
    EXPECT_FALSE(Exists("misc section", kKey));
    EXPECT_FALSE(Exists(kSection, "info palette pixel display"));
}

TEST_F(PreferenceStore, TextThatIsNoWholeNumberIsABadValueAndLeavesTheOutputAlone) {
    const fs::path file = folder_ / "prefs.txt";
    WriteFile(file, "[Misc Section]\n"
                    "Info Palette Pixel Display = seven\n"
                    "Fraction = 1.5\n"
                    "Too Large = 99999999999999999999\n"
                    "Empty =\n"
                    "Inner Space = 1 2\n"
                    "Two Signs = +-3\n"
                    "Plus = +4\n"
                    "Padded =    -12   \n");
    qzhost::SetPreferenceFile(file);
    for (const char* key : {kKey, "Fraction", "Too Large", "Empty", "Inner Space", "Two Signs"}) {
        long value = 77;
        EXPECT_EQ(PREF_GetTextPrefLong(Store(), kSection, key, 0, &value), PREF_Err_BAD_VALUE)
            << key;
        EXPECT_EQ(value, 77) << key;
        EXPECT_TRUE(Exists(kSection, key)) << key;
    }
    EXPECT_EQ(Get(kSection, "Plus"), 4);
    EXPECT_EQ(Get(kSection, "Padded"), -12);
}

TEST_F(PreferenceStore, AHandWrittenFileWithCommentsBlankLinesAndCarriageReturnsReads) {
    const fs::path file = folder_ / "prefs.txt";
    WriteFile(file, "# written by hand\r\n"
                    "\r\n"
                    "   [ Misc Section ]   \r\n"
                    "  Info Palette Pixel Display=5\r\n"
                    "   # a comment inside a section\n"
                    "[Second]\n"
                    "a = 1\n"
                    "[Misc Section]\n"
                    "Later Key = 9");
    qzhost::SetPreferenceFile(file);
    EXPECT_EQ(Get(kSection, kKey), 5);
    EXPECT_EQ(Get("Second", "a"), 1);
    EXPECT_EQ(Get(kSection, "Later Key"), 9); // a repeated section adds to the first
    EXPECT_TRUE(qzhost::HostControls::Get().TakeWarnings().empty());
}

TEST_F(PreferenceStore, AnyTextForSectionsAndKeysReadsBackFromTheFile) {
    const fs::path file = folder_ / "prefs.txt";
    qzhost::SetPreferenceFile(file);
    const std::vector<std::pair<std::string, std::string>> names = {
        {"Misc Section", "Info Palette Pixel Display"},
        {"[brackets]", "key = with equals"},
        {"# not a comment", "#hash"},
        {" leading and trailing ", "  two spaces  "},
        {"back\\slash", "ends with \\"},
        {"line\nbreak", "tab\there\rreturn"},
        {"control \x01\x1f\x7f", "utf-8 \xc3\xa9\xe2\x82\xac"},
        {"", ""},
        {" ", "="},
        {"x\\n", "\\x41"},
    };
    long value = 100;
    for (const auto& [section, key] : names) {
        ASSERT_EQ(PREF_SetTextPrefLong(Store(), section.c_str(), key.c_str(), value++),
                  QZ_Err_NONE);
    }
    qzhost::HostControls::Get().Reset();
    qzhost::SetPreferenceFile(file);
    EXPECT_TRUE(qzhost::HostControls::Get().TakeWarnings().empty()) << ReadFile(file);
    value = 100;
    for (const auto& [section, key] : names) {
        EXPECT_EQ(Get(section.c_str(), key.c_str()), value++) << section << " / " << key;
    }
    // Nothing collides: an escaped "\n" is not a newline, and so on.
    EXPECT_FALSE(Exists("x\n", "A"));
}

TEST_F(PreferenceStore, AMissingFileIsCreatedWithItsFolder) {
    const fs::path file = folder_ / "deeper" / "still" / "prefs.txt";
    qzhost::SetPreferenceFile(file);
    EXPECT_TRUE(fs::is_regular_file(file));
    EXPECT_EQ(ReadFile(file), "# qzhost preferences\n");
    EXPECT_EQ(qzhost::PreferenceFilePath(), file);
}

TEST_F(PreferenceStore, AFileThatIsAFolderCannotBeUsed) {
    qzhost::SetPreferenceFile(folder_ / "first.txt");
    ASSERT_EQ(PREF_SetTextPrefLong(Store(), kSection, kKey, 3), QZ_Err_NONE);
    EXPECT_THROW(qzhost::SetPreferenceFile(folder_), std::runtime_error);
    // The store keeps its file and values.
    EXPECT_EQ(qzhost::PreferenceFilePath(), folder_ / "first.txt");
    EXPECT_EQ(Get(kSection, kKey), 3);
}

TEST_F(PreferenceStore, NullArgumentsAreRefused) {
    bool exists = true;
    long value = 5;
    EXPECT_EQ(PREF_DoesKeyExist(nullptr, kSection, kKey, &exists), QZ_Err_NULL_ARGUMENT);
    EXPECT_EQ(PREF_DoesKeyExist(Store(), nullptr, kKey, &exists), QZ_Err_NULL_ARGUMENT);
    EXPECT_EQ(PREF_DoesKeyExist(Store(), kSection, nullptr, &exists), QZ_Err_NULL_ARGUMENT);
    EXPECT_EQ(PREF_DoesKeyExist(Store(), kSection, kKey, nullptr), QZ_Err_NULL_ARGUMENT);
    EXPECT_EQ(PREF_GetTextPrefLong(nullptr, kSection, kKey, 0, &value), QZ_Err_NULL_ARGUMENT);
    EXPECT_EQ(PREF_GetTextPrefLong(Store(), kSection, kKey, 0, nullptr), QZ_Err_NULL_ARGUMENT);
    EXPECT_EQ(PREF_SetTextPrefLong(nullptr, kSection, kKey, 1), QZ_Err_NULL_ARGUMENT);
    EXPECT_EQ(PREF_SetTextPrefLong(Store(), nullptr, kKey, 1), QZ_Err_NULL_ARGUMENT);
    EXPECT_EQ(PREF_SetTextPrefLong(Store(), kSection, nullptr, 1), QZ_Err_NULL_ARGUMENT);
    EXPECT_TRUE(exists);
    EXPECT_EQ(value, 5);
}

TEST_F(PreferenceStore, InjectedErrorsReplaceTheResultOfEachOperation) {
    const fs::path file = folder_ / "prefs.txt";
    qzhost::SetPreferenceFile(file);
    ASSERT_EQ(PREF_SetTextPrefLong(Store(), kSection, kKey, 2), QZ_Err_NONE);
    auto& controls = qzhost::HostControls::Get();

    controls.SetError(qzhost::op::kPrefExists, 41);
    bool exists = false;
    EXPECT_EQ(PREF_DoesKeyExist(Store(), kSection, kKey, &exists), 41);
    EXPECT_FALSE(exists);
    long value = -1;
    EXPECT_EQ(PREF_GetTextPrefLong(Store(), kSection, kKey, 0, &value), QZ_Err_NONE);
    EXPECT_EQ(value, 2);

    controls.SetError(qzhost::op::kPrefRead, 42);
    value = -1;
    EXPECT_EQ(PREF_GetTextPrefLong(Store(), kSection, kKey, 0, &value), 42);
    EXPECT_EQ(value, -1);

    controls.SetError(qzhost::op::kPrefWrite, 43);
    EXPECT_EQ(PREF_SetTextPrefLong(Store(), kSection, kKey, 6), 43);
    EXPECT_EQ(qzhost::ReadStoredPreference(kSection, kKey), "2"); // nothing written

    controls.SetError(qzhost::op::kPrefExists, 0);
    controls.SetError(qzhost::op::kPrefRead, 0);
    controls.SetError(qzhost::op::kPrefWrite, 0);
    EXPECT_TRUE(Exists(kSection, kKey));
    EXPECT_EQ(Get(kSection, kKey), 2); // the refused write changed nothing in memory either
    EXPECT_EQ(PREF_SetTextPrefLong(Store(), kSection, kKey, 6), QZ_Err_NONE);
    EXPECT_EQ(Get(kSection, kKey), 6);
}

TEST_F(PreferenceStore, TheDefaultFileIsNewEmptyAndPrivateToEachReset) {
    const fs::path first = qzhost::PreferenceFilePath();
    EXPECT_TRUE(fs::is_regular_file(first));
    EXPECT_EQ(ReadFile(first), "# qzhost preferences\n");
    EXPECT_FALSE(Exists(kSection, kKey));
    ASSERT_EQ(PREF_SetTextPrefLong(Store(), kSection, kKey, 4), QZ_Err_NONE);
    EXPECT_EQ(qzhost::ReadStoredPreference(kSection, kKey), "4");

    qzhost::HostControls::Get().Reset();
    const fs::path second = qzhost::PreferenceFilePath();
    EXPECT_NE(first, second);
    EXPECT_FALSE(fs::exists(first)); // the old private file went with the reset
    EXPECT_FALSE(fs::exists(first.parent_path()));
    EXPECT_FALSE(Exists(kSection, kKey));
    EXPECT_EQ(qzhost::ReadStoredPreference(kSection, kKey), std::nullopt);
}

TEST_F(PreferenceStore, ChoosingAFileRemovesThePrivateOne) {
    const fs::path private_file = qzhost::PreferenceFilePath();
    ASSERT_TRUE(fs::exists(private_file));
    qzhost::SetPreferenceFile(folder_ / "mine.txt");
    EXPECT_FALSE(fs::exists(private_file));
    EXPECT_TRUE(fs::exists(folder_ / "mine.txt"));
}

TEST_F(PreferenceStore, TheUserFileFollowsXdgConfigHomeThenHome) {
    const char* old_xdg = std::getenv("XDG_CONFIG_HOME");
    const char* old_home = std::getenv("HOME");
    const std::string saved_xdg = old_xdg != nullptr ? old_xdg : "";
    const std::string saved_home = old_home != nullptr ? old_home : "";

    ::setenv("XDG_CONFIG_HOME", "/config/here", 1);
    ::setenv("HOME", "/home/someone", 1);
    EXPECT_EQ(qzhost::DefaultPreferenceFilePath(), fs::path("/config/here/qzhost/preferences.txt"));
    ::setenv("XDG_CONFIG_HOME", "relative/not/used", 1);
    EXPECT_EQ(qzhost::DefaultPreferenceFilePath(),
              fs::path("/home/someone/.config/qzhost/preferences.txt"));
    ::unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(qzhost::DefaultPreferenceFilePath(),
              fs::path("/home/someone/.config/qzhost/preferences.txt"));
    ::unsetenv("HOME");
    EXPECT_THROW(qzhost::DefaultPreferenceFilePath(), std::runtime_error);

    if (old_xdg != nullptr) {
        ::setenv("XDG_CONFIG_HOME", saved_xdg.c_str(), 1);
    }
    if (old_home != nullptr) {
        ::setenv("HOME", saved_home.c_str(), 1);
    }
}

} // namespace
} // namespace prefstest

namespace prefstest {
namespace {

TEST_F(PreferenceStore, EveryOperationCalledOffTheMainThreadIsRecorded) {
    qzhost::SetPreferenceFile(folder_ / "prefs.txt");
    std::thread worker([] {
        PREF_Handle store = PREF_GetPrefHandle(PREF_TYPE_TEXT);
        bool exists = false;
        long value = 0;
        (void)PREF_DoesKeyExist(store, kSection, kKey, &exists);
        (void)PREF_GetTextPrefLong(store, kSection, kKey, 0, &value);
        (void)PREF_SetTextPrefLong(store, kSection, kKey, 1);
    });
    worker.join();
    const std::vector<std::string> violations = qzhost::HostControls::Get().Violations();
    ASSERT_EQ(violations.size(), 4u);
    EXPECT_NE(violations[0].find("PREF_GetPrefHandle"), std::string::npos);
    EXPECT_NE(violations[1].find("PREF_DoesKeyExist"), std::string::npos);
    EXPECT_NE(violations[2].find("PREF_GetTextPrefLong"), std::string::npos);
    EXPECT_NE(violations[3].find("PREF_SetTextPrefLong"), std::string::npos);
}

} // namespace
} // namespace prefstest
