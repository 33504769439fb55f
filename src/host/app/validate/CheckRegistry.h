// Every check of `qzhost validate`, in the order in which they run. Each group of checks
// adds its own in its own file.
#pragma once

#include <vector>

#include "validate/Check.h"

namespace qzhost::validate {

/// Every check, ordered by level and then by the order in which the groups add them.
const std::vector<Check>& AllChecks();

// The groups, one file each.
void AddLibraryChecks(std::vector<Check>& checks);   // library.*
void AddEntryChecks(std::vector<Check>& checks);     // entry.*
void AddHookChecks(std::vector<Check>& checks);      // hooks.*
void AddThreadChecks(std::vector<Check>& checks);    // threads.*
void AddPanelChecks(std::vector<Check>& checks);     // panel.*
void AddStringChecks(std::vector<Check>& checks);    // suite.strings-not-kept
void AddArgumentChecks(std::vector<Check>& checks);  // suite.arguments
void AddLifecycleChecks(std::vector<Check>& checks); // lifecycle.*

} // namespace qzhost::validate
