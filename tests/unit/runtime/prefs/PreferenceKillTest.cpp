// Writing the preference file survives the writer being killed at any moment: the file
// always parses and holds one of the values written.
#include <chrono>
#include <filesystem>
#include <string>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include "PrefsTestSupport.h"

namespace prefstest {
namespace {

namespace fs = std::filesystem;

using PreferenceKill = PrefsTest;

// Values of round r are r * kRoundSpan + 1, + 2, ...: each value names its round.
constexpr long kRoundSpan = 1000000;

[[noreturn]] void WriteForever(const fs::path& file, long round) {
    try {
        qzhost::SetPreferenceFile(file);
    } catch (...) {
        ::_exit(1);
    }
    PREF_Handle store = PREF_GetPrefHandle(PREF_TYPE_TEXT);
    for (long i = 1; i < kRoundSpan; ++i) {
        // Another key changes too, so that the file's length varies from write to write.
        (void)PREF_SetTextPrefLong(store, "Padding", std::string(i % 7, 'x').c_str(), i);
        if (PREF_SetTextPrefLong(store, kSection, kKey, round * kRoundSpan + i) != 0) {
            ::_exit(2);
        }
    }
    ::_exit(0);
}

TEST_F(PreferenceKill, TheFileHoldsAWrittenValueWhenTheWriterIsKilledAtAnyMoment) {
    const fs::path file = folder_ / "prefs.txt";
    qzhost::SetPreferenceFile(file);
    ASSERT_EQ(PREF_SetTextPrefLong(Store(), kSection, kKey, 0), QZ_Err_NONE);

    constexpr long kRounds = 80;
    long previous = 0;
    int rounds_with_a_new_value = 0;
    for (long round = 1; round <= kRounds; ++round) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            WriteForever(file, round);
        }
        // From at once to about 40 ms, in an order that hits early and late moments.
        const auto delay = std::chrono::microseconds((round * 7919) % 40000);
        ::usleep(static_cast<useconds_t>(delay.count()));
        ::kill(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status)) << "the writer stopped by itself: " << status;

        // The file parses (a file that did not would be set aside with a warning) and
        // holds the value from before the round or one written in this round.
        ASSERT_TRUE(fs::is_regular_file(file));
        qzhost::SetPreferenceFile(file);
        ASSERT_TRUE(qzhost::HostControls::Get().TakeWarnings().empty())
            << "round " << round << ":\n"
            << ReadFile(file);
        long value = -1;
        ASSERT_EQ(PREF_GetTextPrefLong(Store(), kSection, kKey, -1, &value), QZ_Err_NONE);
        if (value != previous) {
            EXPECT_EQ(value / kRoundSpan, round) << "value " << value;
            EXPECT_GE(value % kRoundSpan, 1) << "value " << value;
            ++rounds_with_a_new_value;
        }
        previous = value;
    }
    // The kills did not all come before the first write.
    EXPECT_GE(rounds_with_a_new_value, kRounds / 8);
    // Left-over temporary files are the only other files; none was taken for the file.
    for (const std::string& name : FilesIn(folder_)) {
        if (name != "prefs.txt") {
            EXPECT_EQ(name.rfind(".prefs.txt.tmp-", 0), 0u) << name;
        }
    }
}

} // namespace
} // namespace prefstest
