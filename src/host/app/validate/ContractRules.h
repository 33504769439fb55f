// The rules of the plug-in contract that several checks test, each a function that
// throws CheckFailure naming the breach and the moment (`when`) it was seen.
#pragma once

#include <string>

#include "validate/Check.h"
#include "validate/ValidationHost.h"

namespace qzhost::validate {

/// Runs a script line against the plug-in; an exception that the plug-in lets escape
/// (of any type) or a line that the host cannot carry out fails the check.
Json RunOp(ValidationHost& host, const Json& line, const std::string& when);
Json RunOp(ValidationHost& host, const char* op, const std::string& when);

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

} // namespace qzhost::validate
