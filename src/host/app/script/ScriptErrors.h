// The two ways a host script stops early: a line that the protocol does not accept
// (exit status 2), or a failure of the host itself (exit status 3).
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace qzhost::script {

inline constexpr int kExitOk = 0;
inline constexpr int kExitBadLine = 2;
inline constexpr int kExitHostFailure = 3;

class ScriptError : public std::runtime_error {
public:
    ScriptError(const std::string& message, int exit_status, std::string detail = {})
        : std::runtime_error(message), exitStatus_(exit_status), detail_(std::move(detail)) {}
    int ExitStatus() const noexcept { return exitStatus_; }
    /// More about the problem, for standard error only.
    const std::string& Detail() const noexcept { return detail_; }

private:
    int exitStatus_;
    std::string detail_;
};

/// The line is not valid JSON, names an unknown op, or has arguments of the wrong shape.
class ArgumentError : public ScriptError {
public:
    explicit ArgumentError(const std::string& message, std::string detail = {})
        : ScriptError(message, kExitBadLine, std::move(detail)) {}
};

/// The host could not do what the line asked (for example load a file that is no
/// plug-in).
class HostFailure : public ScriptError {
public:
    explicit HostFailure(const std::string& message) : ScriptError(message, kExitHostFailure) {}
};

} // namespace qzhost::script
