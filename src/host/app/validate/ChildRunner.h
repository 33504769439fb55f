// Runs one check in a child process of its own (fork), so that a crash, an abort or a
// hang of the plug-in fails that check only: the child reports its steps and its result
// through a pipe, and the parent kills it when it runs past the time limit.
#pragma once

#include <cstdint>
#include <string>

#include "validate/Check.h"

namespace qzhost::validate {

struct CheckOutcome {
    bool passed = false;
    /// Why it failed, or what a pass covered.
    std::string reason;
    /// The signal that ended the child ("SIGSEGV"), empty when it was not a signal.
    std::string signal;
    bool timedOut = false;
    double seconds = 0;
};

struct RunSettings {
    std::string plugin;
    int level = 5;
    std::uint64_t seed = 1;
    int timeoutSeconds = 300;
};

/// Runs `check` in a forked child. The child has only the thread that forked: the host
/// never starts a thread of its own before it forks (the idle worker pool that a library
/// linked for `inspect` starts at load time stays behind, unused), and the child ends
/// with _exit, so that no exit handler waits for a thread that it does not have.
CheckOutcome RunInChild(const Check& check, const RunSettings& settings);

/// The file descriptor that the running check reports through, in the child; -1 in the
/// parent. Safe to read from a signal handler.
int ResultDescriptor() noexcept;

/// Writes one protocol line ("step ...", "pass ...", "fail ...") to `fd`; newlines in
/// the text become spaces. Not for signal handlers.
void WriteResultLine(int fd, const std::string& kind, const std::string& text);

} // namespace qzhost::validate
