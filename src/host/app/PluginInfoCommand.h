// `qzhost plugin-info LIBRARY [--json]`: reads a plug-in's property list from its file,
// without loading it, checks it the way the host does before loading, and prints it.
#pragma once

#include <iosfwd>
#include <string>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "qzhost/PluginLoader.h"

namespace qzhost::commands {

/// The property list, one property per line: the key, two spaces and the value
/// ("kind  QZgx", "name  \"...\"", "vers  0x00010000", "8664  GPMain_InfoPal").
std::string PluginInfoText(const PluginInfo& info);

/// The property list as JSON: format version, kind, entry point and the properties, each
/// described with the value fields of a resource manifest ("fourcc", "pascal",
/// "cstring", "u32" or "hex") and its length.
nlohmann::json PluginInfoJson(const PluginInfo& info);

/// Prints the plug-in information of `library` to `out` (as JSON when `json`) and returns
/// 0; on failure writes one line to `err` and returns 2 (no such file) or 3 (not a valid
/// plug-in).
int RunPluginInfoCommand(const std::string& library, bool json, std::ostream& out,
                         std::ostream& err);

/// Adds the `plugin-info` subcommand to `app`. When it runs, its exit status is stored
/// in `exit_status`.
CLI::App* AddPluginInfoCommand(CLI::App& app, int& exit_status);

} // namespace qzhost::commands
