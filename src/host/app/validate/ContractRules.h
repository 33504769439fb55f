// The rules of the plug-in contract that several checks test, each a function that
// throws CheckFailure naming the breach and the moment (`when`) it was seen.
#pragma once

#include <optional>
#include <string>

#include "validate/Check.h"
#include "validate/ValidationHost.h"

namespace qzhost::validate {

/// Runs a script line against the plug-in; an exception that the plug-in lets escape
/// (of any type) or a line that the host cannot carry out fails the check.
Json RunOp(ValidationHost& host, const Json& line, const std::string& when);
Json RunOp(ValidationHost& host, const char* op, const std::string& when);
/// The "workspace" line that carries out `action` ("open", "close", "hide", ...).
Json WorkspaceLine(const char* action);

/// The plug-in holds no suite.
void RequireNothingHeld(const std::string& when);
/// No [ui-thread] operation was called off the main thread, no hook registered twice.
void RequireNoViolations(const std::string& when);
/// Nothing was reported through U_TranslateAndReportException.
void RequireNothingReported(const std::string& when);
/// No tab creator is registered.
void RequireNoTabCreators(const std::string& when);
/// A result code is one of the allowed ones.
void RequireResult(const Json& output, std::initializer_list<int> allowed, const std::string& when);

/// After a start that failed: no global reference, nothing held, no tab creator.
void RequireCleanFailedStart(const Json& load, const std::string& when);

/// Ends a variation of the start: the death hook (its result one of `death_results`),
/// nothing held and no tab creator afterwards, nothing reported, no breach of the calling
/// contract, then the unload.
void DieAndUnload(ValidationHost& host, std::initializer_list<int> death_results,
                  const std::string& when, bool nothing_reported = true);

/// Loads the plug-in and requires a successful start.
void LoadStarted(ValidationHost& host, const CheckContext& context);

/// Loads the plug-in and requires a successful start, for a check that calls the
/// published suite: when the plug-in publishes none, unloads it and gives the reason the
/// check has nothing to call; otherwise nothing.
std::optional<std::string> LoadStartedWithSuite(ValidationHost& host, const CheckContext& context);

} // namespace qzhost::validate
