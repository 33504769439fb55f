// Runs a program of the machine through the shell and reads what it prints: the header
// checks read object files and libraries with the binary tools (readelf, nm).
#pragma once

#include <string>

namespace sdkcheck {

/// `text` quoted for the shell, as one word.
std::string ShellQuoted(const std::string& text);

/// The standard output of the shell command `command`. Throws std::runtime_error when it
/// cannot be run or ends with a non-zero status.
std::string ProgramOutput(const std::string& command);

} // namespace sdkcheck
