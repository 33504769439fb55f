#include "validate/ChildRunner.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <exception>
#include <iostream>
#include <stdexcept>

namespace qzhost::validate {

namespace {

volatile int gResultFd = -1;

std::string SignalName(int signal) {
    const char* abbreviation = ::sigabbrev_np(signal);
    return abbreviation != nullptr ? std::string("SIG") + abbreviation
                                   : "signal " + std::to_string(signal);
}

[[noreturn]] void RunChild(const Check& check, const RunSettings& settings, int fd) {
    gResultFd = fd;
    // The plug-in's and the host's own output must not mix with the results on standard
    // output: the child's standard output goes to standard error.
    ::dup2(STDERR_FILENO, STDOUT_FILENO);
    const CheckContext context(settings.plugin, settings.level, settings.seed, fd);
    std::string kind = "fail";
    std::string text;
    try {
        text = check.run(context);
        kind = "pass";
    } catch (const CheckFailure& failure) {
        text = failure.what();
    } catch (const std::exception& error) {
        text = std::string("the check stopped: ") + error.what();
    } catch (...) {
        text = "an exception of unknown type escaped to the host";
    }
    WriteResultLine(fd, kind, text);
    std::cout.flush();
    std::cerr.flush();
    // No exit handlers or destructors of the parent's objects run in the child.
    ::_exit(0);
}

} // namespace

int ResultDescriptor() noexcept {
    return gResultFd;
}

void WriteResultLine(int fd, const std::string& kind, const std::string& text) {
    std::string line = kind + " " + text;
    for (char& c : line) {
        if (c == '\n' || c == '\r') {
            c = ' ';
        }
    }
    line += '\n';
    const char* data = line.data();
    std::size_t left = line.size();
    while (left > 0) {
        const ssize_t written = ::write(fd, data, left);
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return;
        }
        data += written;
        left -= static_cast<std::size_t>(written);
    }
}

void CheckContext::Step(const std::string& what) const {
    if (progressFd_ >= 0) {
        WriteResultLine(progressFd_, "step", what);
    }
}

CheckOutcome RunInChild(const Check& check, const RunSettings& settings) {
    int fds[2];
    if (::pipe2(fds, O_CLOEXEC) != 0) {
        throw std::runtime_error(std::string("cannot make a pipe: ") + std::strerror(errno));
    }
    std::cout.flush();
    std::cerr.flush();
    std::fflush(nullptr);
    const auto start = std::chrono::steady_clock::now();
    const pid_t pid = ::fork();
    if (pid < 0) {
        ::close(fds[0]);
        ::close(fds[1]);
        throw std::runtime_error(std::string("cannot fork: ") + std::strerror(errno));
    }
    if (pid == 0) {
        ::close(fds[0]);
        RunChild(check, settings, fds[1]);
    }
    ::close(fds[1]);

    CheckOutcome outcome;
    std::string received;
    const auto deadline = start + std::chrono::seconds(settings.timeoutSeconds);
    for (;;) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            deadline - std::chrono::steady_clock::now());
        if (left.count() <= 0) {
            outcome.timedOut = true;
            ::kill(pid, SIGKILL);
            break;
        }
        pollfd poll_fd{fds[0], POLLIN, 0};
        const int ready = ::poll(&poll_fd, 1, static_cast<int>(left.count()));
        if (ready < 0 && errno == EINTR) {
            continue;
        }
        if (ready == 0) {
            continue; // the deadline is tested at the top
        }
        char buffer[4096];
        const ssize_t got = ::read(fds[0], buffer, sizeof buffer);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            break; // the child closed its end: it ended
        }
        received.append(buffer, static_cast<std::size_t>(got));
    }
    ::close(fds[0]);
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    outcome.seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();

    // The last step told, and the result line if the child got that far.
    std::string last_step;
    std::string result_kind;
    std::string result_text;
    std::size_t begin = 0;
    while (begin < received.size()) {
        std::size_t end = received.find('\n', begin);
        if (end == std::string::npos) {
            end = received.size();
        }
        const std::string line = received.substr(begin, end - begin);
        begin = end + 1;
        const std::size_t space = line.find(' ');
        const std::string kind = line.substr(0, space);
        const std::string text = space == std::string::npos ? "" : line.substr(space + 1);
        if (kind == "step") {
            last_step = text;
        } else if (kind == "pass" || kind == "fail") {
            result_kind = kind;
            result_text = text;
        }
    }
    const std::string during = last_step.empty() ? "" : " during: " + last_step;
    if (outcome.timedOut) {
        outcome.signal = "SIGKILL";
        outcome.reason =
            "no result within " + std::to_string(settings.timeoutSeconds) + " s (hang)" + during;
        return outcome;
    }
    if (WIFSIGNALED(status)) {
        outcome.signal = SignalName(WTERMSIG(status));
        outcome.reason = result_kind == "fail"
                             ? result_text + " (" + outcome.signal + ")"
                             : "the check process died of " + outcome.signal + during;
        return outcome;
    }
    if (result_kind.empty()) {
        const int code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        outcome.reason = "the check process exited with status " + std::to_string(code) +
                         " before its result" + during;
        return outcome;
    }
    outcome.passed = result_kind == "pass";
    outcome.reason = result_text;
    return outcome;
}

} // namespace qzhost::validate
