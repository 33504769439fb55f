// The host's count of live match-name references, so that a test can check that a
// caller released every name that it was given.
#pragma once

#include <cstdint>

#include "qzgp/QZ_Basic.h"

namespace qzhost {

/// [any-thread] How many KVB_MatchName objects hold a name right now (the host's own
/// constants included). Every non-empty name adds one while it lives.
QZ_HOST_API std::int64_t LiveMatchNameCount() noexcept;

} // namespace qzhost
