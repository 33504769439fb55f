// Where the string arguments of a suite call live while the call runs. By default a
// call's strings live in the values that the call keeps; a contract checker may place
// them in memory of its own instead (for example pages that it seals once the call has
// returned, to catch a plug-in that keeps a caller's pointer).
#pragma once

#include <string_view>

#include "kitcore/utility/UTF16String.h"

namespace qzhost::script {

class StringPlacement {
public:
    virtual ~StringPlacement() = default;
    /// A copy of `text` followed by its terminating zero; valid while the placement says.
    virtual const char* Place(std::string_view text) = 0;
    /// A copy of `text` followed by its terminating zero unit.
    virtual const kitcore::utility::UTF16Char*
    Place(std::basic_string_view<kitcore::utility::UTF16Char> text) = 0;
};

/// The placement that calls made from now on use (main thread only); null restores the
/// default. The caller keeps the placement alive while it is set.
void SetStringPlacement(StringPlacement* placement) noexcept;
StringPlacement* CurrentStringPlacement() noexcept;

} // namespace qzhost::script
