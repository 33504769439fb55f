// `qzhost resource LIBRARY TYPE NAME`: writes the bytes of one resource that a library
// file carries to standard output, without loading the library.
#pragma once

#include <iosfwd>
#include <string>

#include <CLI/CLI.hpp>

namespace qzhost::commands {

/// Exit statuses of the resource and plug-in-info commands.
inline constexpr int kExitOk = 0;
/// A bad argument: no such file, or no such resource in it.
inline constexpr int kExitBadArgument = 2;
/// A file that the host cannot read as a library or plug-in.
inline constexpr int kExitHostFailure = 3;

/// Writes the bytes of the resource of `type` named `name` (both without regard to case)
/// of the library file `library` to `out` and returns kExitOk; on failure writes one line
/// to `err` and returns kExitBadArgument or kExitHostFailure.
int RunResourceCommand(const std::string& library, const std::string& type, const std::string& name,
                       std::ostream& out, std::ostream& err);

/// Adds the `resource` subcommand to `app`. When it runs, its exit status is stored in
/// `exit_status`.
CLI::App* AddResourceCommand(CLI::App& app, int& exit_status);

} // namespace qzhost::commands
