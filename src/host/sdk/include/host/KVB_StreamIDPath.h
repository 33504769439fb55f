// A property path: the match names from a layer down to one of its properties (streams),
// and whether the path runs through one of the layer's masks.
#pragma once

#include <vector>

#include "host/KVB_MatchName.h"
#include "qzgp/QZ_Basic.h"

class QZ_HOST_API KVB_StreamIDPath {
public:
    /// QZ_ANY_THREAD The empty path: no names, outside any mask.
    KVB_StreamIDPath();
    /// QZ_ANY_THREAD The path through `names`, the first below the layer, the last the
    /// property itself; `inside_mask` when it runs through a mask.
    KVB_StreamIDPath(std::vector<KVB_MatchName> names, bool inside_mask);
    /// QZ_ANY_THREAD Copies share the names' records.
    KVB_StreamIDPath(const KVB_StreamIDPath& other);
    /// QZ_ANY_THREAD
    KVB_StreamIDPath(KVB_StreamIDPath&& other) noexcept;
    /// QZ_ANY_THREAD
    KVB_StreamIDPath& operator=(const KVB_StreamIDPath& other);
    /// QZ_ANY_THREAD
    KVB_StreamIDPath& operator=(KVB_StreamIDPath&& other) noexcept;
    /// QZ_ANY_THREAD Releases the names.
    ~KVB_StreamIDPath();

    /// QZ_ANY_THREAD The names from the layer down.
    const std::vector<KVB_MatchName>& Names() const noexcept { return names_; }
    /// QZ_ANY_THREAD Whether the path runs through a mask.
    bool InsideMask() const noexcept { return insideMask_; }

private:
    std::vector<KVB_MatchName> names_;
    bool insideMask_ = false;
};
