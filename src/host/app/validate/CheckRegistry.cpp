#include "validate/CheckRegistry.h"

#include <algorithm>
#include <set>
#include <stdexcept>

namespace qzhost::validate {

const std::vector<Check>& AllChecks() {
    static const std::vector<Check> checks = [] {
        std::vector<Check> all;
        AddLibraryChecks(all);
        AddEntryChecks(all);
        AddHookChecks(all);
        AddThreadChecks(all);
        AddPanelChecks(all);
        AddStringChecks(all);
        AddArgumentChecks(all);
        AddLifecycleChecks(all);
        std::set<std::string> ids;
        for (const Check& check : all) {
            if (!ids.insert(check.id).second) {
                throw std::logic_error("check added twice: " + check.id);
            }
        }
        std::stable_sort(all.begin(), all.end(),
                         [](const Check& a, const Check& b) { return a.level < b.level; });
        return all;
    }();
    return checks;
}

} // namespace qzhost::validate
