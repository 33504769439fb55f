// One named check of `qzhost validate`: what it is called, the lowest level that runs it,
// and its body, which runs in a child process of its own.
#pragma once

#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>

namespace qzhost::validate {

/// What a check body gets: the plug-in, the level and seed of the run, and a way to say
/// what it is doing (so that a crash or hang can be placed).
class CheckContext {
public:
    CheckContext(std::string plugin, int level, std::uint64_t seed, int progress_fd)
        : plugin_(std::move(plugin)), level_(level), seed_(seed), progressFd_(progress_fd) {}

    const std::string& Plugin() const noexcept { return plugin_; }
    int Level() const noexcept { return level_; }
    std::uint64_t Seed() const noexcept { return seed_; }
    /// Tells the parent what the check does now; a crash or hang is reported with the
    /// last step told.
    void Step(const std::string& what) const;

private:
    std::string plugin_;
    int level_;
    std::uint64_t seed_;
    int progressFd_;
};

/// A check that found a breach throws this; the message is the reason shown.
class CheckFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Throws CheckFailure(reason) unless `condition` holds.
inline void Require(bool condition, const std::string& reason) {
    if (!condition) {
        throw CheckFailure(reason);
    }
}

struct Check {
    std::string id;
    int level = 1;
    std::string summary;
    /// Returns the short reason of a pass (what was covered); throws CheckFailure.
    std::function<std::string(const CheckContext&)> run;
};

} // namespace qzhost::validate
