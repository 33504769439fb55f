// The host that a check drives: a script session (the reference host in its default
// state, with the plug-in under test) and the script ops, run as a script line would run
// them. What the host records of the plug-in's calls is read back through HostState.
#pragma once

#include <string>
#include <vector>

#include "script/Json.h"
#include "script/ScriptSession.h"

namespace qzhost::validate {

using script::Json;

/// What the host records of the plug-in's side of the contract at one moment.
struct HostState {
    std::vector<std::string> held;        // suites the plug-in holds
    std::vector<std::string> tabCreators; // tab types registered
    std::vector<std::string> reported;    // messages reported through the host
    std::vector<std::string> violations;  // breaches of the calling contract
    std::size_t menuItems = 0;
};

class ValidationHost {
public:
    /// Resets the host to its default state for the plug-in at `plugin`.
    explicit ValidationHost(const std::string& plugin);
    ~ValidationHost();
    ValidationHost(const ValidationHost&) = delete;
    ValidationHost& operator=(const ValidationHost&) = delete;

    /// Runs one script line, e.g. {"op": "load"}, and returns its output object. A line
    /// that the host refuses or cannot carry out throws (std::runtime_error).
    Json Op(const Json& line);
    /// Runs {"op": name} with no further fields.
    Json Op(const char* name);

    script::ScriptSession& Session() noexcept { return session_; }
    bool Loaded() const noexcept { return session_.Loaded(); }
    /// Whether the plug-in's Info palette suite is in the host's table.
    static bool SuitePublished();

    static HostState State();

private:
    script::ScriptSession session_;
};

/// Text of a list for messages: "a, b, c", or "none".
std::string Listed(const std::vector<std::string>& items);

} // namespace qzhost::validate
