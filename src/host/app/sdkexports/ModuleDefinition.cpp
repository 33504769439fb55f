#include "sdkexports/ModuleDefinition.h"

namespace qzsdkexports {

std::string ModuleDefinitionText(std::string_view library,
                                 const std::vector<ImportEntry>& entries) {
    std::string text = "LIBRARY " + std::string(library) + "\nEXPORTS\n";
    for (const ImportEntry& entry : entries) {
        text += "    " + entry.name + (entry.data ? " DATA" : "") + "\n";
    }
    return text;
}

} // namespace qzsdkexports
