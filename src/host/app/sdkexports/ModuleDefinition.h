// The module-definition file from which dlltool makes a DLL's import library.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sdkexports/ImportedSymbols.h"

namespace qzsdkexports {

/// "LIBRARY <library>", then "EXPORTS" and one line per entry, in the order given; data
/// entries are marked DATA, so that the import library gives them an import pointer
/// and no code thunk.
std::string ModuleDefinitionText(std::string_view library, const std::vector<ImportEntry>& entries);

} // namespace qzsdkexports
