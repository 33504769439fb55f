// The comparison of a host script's standard output with its expected text.
//
// Lines are compared one by one, in order, and both texts must have the same number of
// lines. A line is compared exactly, except where the output line is a snapshot: there
// the expected line is a JSON object that names only what the case is about. Each of
// its members must equal the output's member of that name, except "controls", which
// lists only the controls that matter (by "id"), each with only the members that
// matter; the output's other members and controls are not looked at.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qzhost::scenario {

/// Every difference between `expected` and `actual`, one message each, naming its line
/// ("line 3: ..."); empty when they agree.
std::vector<std::string> CompareOutput(std::string_view expected, std::string_view actual);

} // namespace qzhost::scenario
