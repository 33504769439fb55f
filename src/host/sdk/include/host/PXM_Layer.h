// A layer of the host's project, as far as property readouts ask about it: its kind and
// its flag word, and the queries on property paths that go with layers.
//
// Layers are the host's: the host builds them (a kind number and the 3-D switch) and hands
// plug-ins pointers. Each layer keeps the list of the kind tests and flag reads that it was
// asked, in order, so that the host can check how its callers query it.
#pragma once

#include <cstdint>
#include <vector>

#include "host/KVB_MatchName.h"
#include "host/KVB_StreamIDPath.h"
#include "qzgp/QZ_Basic.h"

/// Layer kind numbers: a visual layer (2-D, or 3-D with the flag below), a camera, a light.
inline constexpr std::int32_t PXM_LayerKind_VISUAL = 0;
inline constexpr std::int32_t PXM_LayerKind_CAMERA = 1;
inline constexpr std::int32_t PXM_LayerKind_LIGHT = 2;

/// The bit of a layer's flag word that makes a visual layer three-dimensional.
inline constexpr std::uint32_t PXM_LayerFlag_THREE_D = 0x400;

/// One question that a layer was asked.
struct PXM_LayerQuery {
    enum class What : std::uint8_t {
        /// A kind test; `kind` is the kind number asked for.
        Kind,
        /// A read of the flag word; `kind` is 0.
        Flags,
    };
    What what = What::Kind;
    std::int32_t kind = 0;

    bool operator==(const PXM_LayerQuery&) const = default;
};

class QZ_HOST_API PXM_Layer {
public:
    /// [ui-thread] A layer whose kind test holds for `kind` alone, with the 3-D switch
    /// (PXM_LayerFlag_THREE_D) set in its flag word when `three_d`.
    PXM_Layer(std::int32_t kind, bool three_d);

    /// [ui-thread] Whether the layer is of kind `kind`. Recorded.
    bool IsOfKind(std::int32_t kind) const;
    /// [ui-thread] The layer's flag word. Recorded.
    std::uint32_t GetFlags() const;

    /// [ui-thread] The match name at the tail of `path`: the property's own name, a new
    /// reference that the caller releases by letting it go. The empty path gives the empty
    /// name.
    static KVB_MatchName GetMatchNameAtTail(const KVB_StreamIDPath& path);

    /// [ui-thread] Every kind test and flag read asked of this layer so far, in order.
    const std::vector<PXM_LayerQuery>& Queries() const noexcept { return queries_; }
    /// [ui-thread] Forgets the recorded queries.
    void ClearQueries() noexcept { queries_.clear(); }

private:
    std::int32_t kind_;
    std::uint32_t flags_;
    mutable std::vector<PXM_LayerQuery> queries_;
};

/// [ui-thread] Whether `path` runs through one of the layer's masks (a mask's shape,
/// opacity, feather, expansion or any other mask property).
QZ_HOST_API bool PXM_IsMaskSubtypeStreamPath(const KVB_StreamIDPath& path);
