// Property paths: the match names from a layer down to a property.
#include <utility>

#include "host/KVB_StreamIDPath.h"

KVB_StreamIDPath::KVB_StreamIDPath() = default;

KVB_StreamIDPath::KVB_StreamIDPath(std::vector<KVB_MatchName> names, bool inside_mask)
    : names_(std::move(names)), insideMask_(inside_mask) {}

KVB_StreamIDPath::KVB_StreamIDPath(const KVB_StreamIDPath& other) = default;
KVB_StreamIDPath::KVB_StreamIDPath(KVB_StreamIDPath&& other) noexcept = default;
KVB_StreamIDPath& KVB_StreamIDPath::operator=(const KVB_StreamIDPath& other) = default;
KVB_StreamIDPath& KVB_StreamIDPath::operator=(KVB_StreamIDPath&& other) noexcept = default;
KVB_StreamIDPath::~KVB_StreamIDPath() = default;
