#include "ResourceNames.h"

#include "qzhost/ResourceArchive.h"

namespace qzhost::resources {

bool ResourceNamesEqual(std::string_view a, std::string_view b) noexcept {
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (FoldAscii(a[i]) != FoldAscii(b[i])) {
            return false;
        }
    }
    return true;
}

} // namespace qzhost::resources
