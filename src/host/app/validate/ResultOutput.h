// How `qzhost validate` prints its results: one line per check and a summary, as text
// or as JSON Lines.
#pragma once

#include <iosfwd>
#include <string>

#include "validate/Check.h"
#include "validate/ChildRunner.h"

namespace qzhost::validate {

struct RunSummary {
    std::string plugin;
    int level = 0;
    std::uint64_t seed = 0;
    int passed = 0;
    int failed = 0;
};

/// `PASS id  reason` or `FAIL id  reason`.
void WriteCheckLine(std::ostream& out, const Check& check, const CheckOutcome& outcome, bool json);
void WriteSummary(std::ostream& out, const RunSummary& summary, bool json);

} // namespace qzhost::validate
