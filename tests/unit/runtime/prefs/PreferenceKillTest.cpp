// Writing the preference file survives the writer being killed at any moment: the file
// always parses and holds one of the values written, and the temporary file that a killed
// writer leaves behind is gone once the file is opened again. A writer that is alive
// keeps its temporary file, and its writes succeed, however often the file is opened.
#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include "PrefsTestSupport.h"

namespace prefstest {
namespace {

namespace fs = std::filesystem;

using PreferenceKill = PrefsTest;

// Values of round r are r * kRoundSpan + 1, + 2, ...: each value names its round.
constexpr long kRoundSpan = 1000000;

// Writes values of `round` into `file`, `count` of them, and ends the process: status 0
// when every write succeeded, 1 when the file could not be opened, 2 when a write failed.
[[noreturn]] void Write(const fs::path& file, long round, long count = kRoundSpan - 1) {
    try {
        qzhost::SetPreferenceFile(file);
    } catch (...) {
        ::_exit(1);
    }
    PREF_Handle store = PREF_GetPrefHandle(PREF_TYPE_TEXT);
    for (long i = 1; i <= count; ++i) {
        // Another key changes too, so that the file's length varies from write to write.
        (void)PREF_SetTextPrefLong(store, "Padding", std::string(i % 7, 'x').c_str(), i);
        if (PREF_SetTextPrefLong(store, kSection, kKey, round * kRoundSpan + i) != 0) {
            ::_exit(2);
        }
    }
    ::_exit(0);
}

// A writer of `file` in a child process.
pid_t StartWriter(const fs::path& file, long round) {
    const pid_t child = ::fork();
    if (child == 0) {
        Write(file, round);
    }
    return child;
}

// A moment from at once to about 40 ms into round `round`, in an order that hits early
// and late moments.
void WaitIntoRound(long round) {
    const auto delay = std::chrono::microseconds((round * 7919) % 40000);
    ::usleep(static_cast<useconds_t>(delay.count()));
}

// Kills `child` and reaps it; fails when it had ended by itself.
void KillAndReap(pid_t child) {
    ::kill(child, SIGKILL);
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status)) << "the writer stopped by itself: " << status;
}

// The files in `folder` other than "prefs.txt".
std::vector<std::string> OthersIn(const fs::path& folder) {
    std::vector<std::string> names = FilesIn(folder);
    std::erase(names, "prefs.txt");
    return names;
}

// Whether some process holds the file locked as a writer does.
bool HeldByAWriter(const fs::path& path) {
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    if (fd < 0) {
        return false;
    }
    const bool held = ::flock(fd, LOCK_EX | LOCK_NB) != 0;
    ::close(fd);
    return held;
}

TEST_F(PreferenceKill, TheFileHoldsAWrittenValueWhenTheWriterIsKilledAtAnyMoment) {
    const fs::path file = folder_ / "prefs.txt";
    qzhost::SetPreferenceFile(file);
    ASSERT_EQ(PREF_SetTextPrefLong(Store(), kSection, kKey, 0), QZ_Err_NONE);

    constexpr long kRounds = 80;
    long previous = 0;
    int rounds_with_a_new_value = 0;
    for (long round = 1; round <= kRounds; ++round) {
        const pid_t child = StartWriter(file, round);
        ASSERT_GE(child, 0);
        WaitIntoRound(round);
        KillAndReap(child);

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
    // No file was taken for the preference file, and none was set aside.
    EXPECT_EQ(FilesIn(folder_), std::vector<std::string>{"prefs.txt"});
}

TEST_F(PreferenceKill, TheTemporaryFileOfAKilledWriterIsRemovedByTheNextOpen) {
    const fs::path file = folder_ / "prefs.txt";
    qzhost::SetPreferenceFile(file);

    constexpr long kRounds = 100;
    int left_behind = 0;
    for (long round = 1; round <= kRounds; ++round) {
        const pid_t child = StartWriter(file, round);
        ASSERT_GE(child, 0);
        WaitIntoRound(round);
        KillAndReap(child);

        // A killed writer leaves at most its one temporary file.
        const std::vector<std::string> others = OthersIn(folder_);
        ASSERT_LE(others.size(), 1u) << "round " << round;
        for (const std::string& name : others) {
            EXPECT_EQ(name.rfind(".prefs.txt.tmp-", 0), 0u) << name;
            ++left_behind;
        }
        qzhost::SetPreferenceFile(file);
        ASSERT_EQ(OthersIn(folder_), std::vector<std::string>{}) << "round " << round;
    }
    // Writers were killed mid-write: files were left, and each went at the next open.
    EXPECT_GE(left_behind, kRounds / 20);
    EXPECT_TRUE(qzhost::HostControls::Get().TakeWarnings().empty());
}

TEST_F(PreferenceKill, AStoppedWriterKeepsItsTemporaryFileUntilItIsKilled) {
    const fs::path file = folder_ / "prefs.txt";
    qzhost::SetPreferenceFile(file);

    // Stops writers at different moments until one is stopped mid-write: its temporary
    // file made and held.
    bool caught = false;
    for (long round = 1; round <= 200 && !caught; ++round) {
        const pid_t child = StartWriter(file, round);
        ASSERT_GE(child, 0);
        WaitIntoRound(round);
        ::kill(child, SIGSTOP);
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, WUNTRACED), child);
        if (WIFSTOPPED(status)) {
            const std::vector<std::string> others = OthersIn(folder_);
            if (others.size() == 1 && HeldByAWriter(folder_ / others[0])) {
                caught = true;
                // This process opens the file while the other one is in the middle of
                // writing it: the writer's file stays.
                qzhost::SetPreferenceFile(file);
                EXPECT_EQ(OthersIn(folder_), others) << "round " << round;
            }
        }
        KillAndReap(child);
        qzhost::SetPreferenceFile(file);
        EXPECT_EQ(OthersIn(folder_), std::vector<std::string>{}) << "round " << round;
    }
    EXPECT_TRUE(caught) << "no writer was stopped mid-write";
}

TEST_F(PreferenceKill, AnotherProcessWritesWithoutFailureWhileTheFileIsOpenedAgainAndAgain) {
    const fs::path file = folder_ / "prefs.txt";
    qzhost::SetPreferenceFile(file);

    constexpr long kWrites = 100;
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        Write(file, 1, kWrites);
    }
    int opens = 0;
    int status = 0;
    pid_t reaped = 0;
    while ((reaped = ::waitpid(child, &status, WNOHANG)) == 0) {
        qzhost::SetPreferenceFile(file);
        ++opens;
    }
    ASSERT_EQ(reaped, child);
    ASSERT_TRUE(WIFEXITED(status)) << status;
    // 2: a write failed, as it would if its temporary file were removed under it.
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_GE(opens, 10);
    qzhost::SetPreferenceFile(file);
    EXPECT_EQ(Get(kSection, kKey), kRoundSpan + kWrites);
    EXPECT_EQ(FilesIn(folder_), std::vector<std::string>{"prefs.txt"});
    EXPECT_TRUE(qzhost::HostControls::Get().TakeWarnings().empty());
}

} // namespace
} // namespace prefstest
