// The `qzhost script` command line: `script [--plugin PATH] [FILE]`.
#pragma once

#include <CLI/CLI.hpp>

namespace qzhost::script {

/// Adds the `script` subcommand to `app`. When it runs, its exit status is stored in
/// `exit_status`.
CLI::App* AddScriptCommand(CLI::App& app, int& exit_status);

} // namespace qzhost::script
