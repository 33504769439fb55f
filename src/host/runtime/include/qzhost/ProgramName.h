// The name of the program that the host runtime runs in, as its messages on standard
// error begin: "qzview: warning: ...", "qzhost: warning: ...".
#pragma once

#include <string>

#include "qzgp/QZ_Basic.h"

namespace qzhost {

/// [any-thread] The name that the program gave with SetProgramName; until it gives one,
/// the name that the program was started under (the last part of its argv[0]).
QZ_HOST_API std::string ProgramName();

/// [ui-thread] Names the program for the runtime's messages; an empty name goes back to
/// the name that the program was started under. Called once, at the start of main.
QZ_HOST_API void SetProgramName(const std::string& name);

} // namespace qzhost
