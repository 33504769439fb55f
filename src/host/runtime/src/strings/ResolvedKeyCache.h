// A per-thread memory of localised keys already resolved and expanded in a locale.
#pragma once

#include <string_view>

#include "kitcore/utility/UTF16String.h"

namespace qzhost::strings {

/// [any-thread] ExpandEscapes(ResolveKeyText(key)) for a non-null `key`, remembered by
/// the calling thread for the host locale: a key's text depends only on the key and the
/// locale's (fixed) table, so a repeated label costs a hash lookup and a copy. The
/// injected string-lookup throw is checked on every call.
const kitcore::utility::UTF16String& ResolvedKeyText(const char* key);

} // namespace qzhost::strings
