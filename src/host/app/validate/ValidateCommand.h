// `qzhost validate [PLUGIN]`: runs the contract checks against a plug-in library, each
// in a child process of its own, and prints one line per check and a summary.
#pragma once

#include <CLI/CLI.hpp>

namespace qzhost::validate {

/// Adds the "validate" subcommand; its exit status (0 all passed, 1 some failed) goes to
/// `exit_status`.
CLI::App* AddValidateCommand(CLI::App& app, int& exit_status);

} // namespace qzhost::validate
