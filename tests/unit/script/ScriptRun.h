// The host script runner over a script given as text.
#pragma once

#include <sstream>
#include <string>

#include "CommandRun.h"
#include "script/ScriptRunner.h"

namespace qztest {

/// Runs `script` with `plugin` as the plug-in file (by default one that does not exist,
/// for lines that need no plug-in).
inline CommandRun RunScriptText(const std::string& script,
                                const std::string& plugin = "no-such-plugin.so") {
    std::istringstream in(script);
    std::ostringstream out;
    std::ostringstream err;
    const int status = qzhost::script::RunScript(in, out, err, plugin);
    return {status, out.str(), err.str()};
}

} // namespace qztest
