// A property path: the match names from a layer down to one of its properties (streams),
// and whether the path runs through one of the layer's masks.
#pragma once

#include <vector>

#include "host/KVB_MatchName.h"
#include "qzgp/QZ_Basic.h"

class QZ_HOST_API KVB_StreamIDPath {
public:
    /// [any-thread] The empty path: no names, outside any mask.
    KVB_StreamIDPath();
    /// [any-thread] The path through `names`, the first below the layer, the last the
    /// property itself; `inside_mask` when it runs through a mask.
    KVB_StreamIDPath(std::vector<KVB_MatchName> names, bool inside_mask);
    /// [any-thread] Copies share the names' records.
    KVB_StreamIDPath(const KVB_StreamIDPath& other);
    /// [any-thread] Takes the other path's streams.
    KVB_StreamIDPath(KVB_StreamIDPath&& other) noexcept;
    /// [any-thread] Takes a copy of the other path's streams.
    KVB_StreamIDPath& operator=(const KVB_StreamIDPath& other);
    /// [any-thread] Takes the other path's streams.
    KVB_StreamIDPath& operator=(KVB_StreamIDPath&& other) noexcept;
    /// [any-thread] Releases the names.
    ~KVB_StreamIDPath();

    /// [any-thread] The names from the layer down.
    const std::vector<KVB_MatchName>& Names() const noexcept { return names_; }
    /// [any-thread] Whether the path runs through a mask.
    bool InsideMask() const noexcept { return insideMask_; }

private:
    std::vector<KVB_MatchName> names_;
    bool insideMask_ = false;
};
