// Runs a host script: JSON Lines in, one JSON object per op out.
#pragma once

#include <iosfwd>
#include <string>

namespace qzhost::script {

/// Runs every line of `in` against a fresh default host with the plug-in library at
/// `plugin_path`, writes one output line per op to `out` and diagnostics to `err`, and
/// shuts the host down at the end. Returns the exit status: 0 when every op ran, 2 for
/// a line that the protocol does not accept, 3 for a failure of the host.
int RunScript(std::istream& in, std::ostream& out, std::ostream& err,
              const std::string& plugin_path);

} // namespace qzhost::script
