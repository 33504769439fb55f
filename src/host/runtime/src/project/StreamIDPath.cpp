// Property paths and the query whether a path runs through a mask.
#include <utility>

#include "host/KVB_StreamIDPath.h"
#include "host/PXM_Layer.h"
#include "qzhost/HostControls.h"

KVB_StreamIDPath::KVB_StreamIDPath() = default;

KVB_StreamIDPath::KVB_StreamIDPath(std::vector<KVB_MatchName> names, bool inside_mask)
    : names_(std::move(names)), insideMask_(inside_mask) {}

KVB_StreamIDPath::KVB_StreamIDPath(const KVB_StreamIDPath& other) = default;
KVB_StreamIDPath::KVB_StreamIDPath(KVB_StreamIDPath&& other) noexcept = default;
KVB_StreamIDPath& KVB_StreamIDPath::operator=(const KVB_StreamIDPath& other) = default;
KVB_StreamIDPath& KVB_StreamIDPath::operator=(KVB_StreamIDPath&& other) noexcept = default;
KVB_StreamIDPath::~KVB_StreamIDPath() = default;

bool PXM_IsMaskSubtypeStreamPath(const KVB_StreamIDPath& path) {
    qzhost::RequireUIThread("PXM_IsMaskSubtypeStreamPath");
    return path.InsideMask();
}
