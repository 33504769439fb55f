// The two ways `qzhost inspect` stops: a request that it cannot carry out (a missing or
// unreadable image, an unknown format, a point outside the image, a malformed option:
// exit status 2), or a failure of the host or of the plug-in (exit status 3).
#pragma once

#include <stdexcept>
#include <string>

namespace qzhost::pixelview {

inline constexpr int kExitOk = 0;
inline constexpr int kExitBadRequest = 2;
inline constexpr int kExitHostFailure = 3;

class PixelViewError : public std::runtime_error {
public:
    PixelViewError(const std::string& message, int exit_status)
        : std::runtime_error(message), exitStatus_(exit_status) {}
    int ExitStatus() const noexcept { return exitStatus_; }

private:
    int exitStatus_;
};

/// The request cannot be carried out as given; the message names what is wrong.
class BadRequest : public PixelViewError {
public:
    explicit BadRequest(const std::string& message) : PixelViewError(message, kExitBadRequest) {}
};

/// The host or the plug-in failed while showing the panel.
class HostFailed : public PixelViewError {
public:
    explicit HostFailed(const std::string& message) : PixelViewError(message, kExitHostFailure) {}
};

} // namespace qzhost::pixelview
