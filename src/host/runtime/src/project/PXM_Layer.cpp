// The host's layers: a kind and a flag word, and the record of what callers asked; and
// the query whether a property path runs through a mask.
#include "host/PXM_Layer.h"
#include "qzhost/HostControls.h"

PXM_Layer::PXM_Layer(std::int32_t kind, bool three_d)
    : kind_(kind), flags_(three_d ? PXM_LayerFlag_THREE_D : 0U) {}

bool PXM_Layer::IsOfKind(std::int32_t kind) const {
    qzhost::RequireUIThread("PXM_Layer::IsOfKind");
    queries_.push_back(PXM_LayerQuery{PXM_LayerQuery::What::Kind, kind});
    return kind == kind_;
}

std::uint32_t PXM_Layer::GetFlags() const {
    qzhost::RequireUIThread("PXM_Layer::GetFlags");
    queries_.push_back(PXM_LayerQuery{PXM_LayerQuery::What::Flags, 0});
    return flags_;
}

KVB_MatchName PXM_Layer::GetMatchNameAtTail(const KVB_StreamIDPath& path) {
    qzhost::RequireUIThread("PXM_Layer::GetMatchNameAtTail");
    const auto& names = path.Names();
    return names.empty() ? KVB_MatchName() : names.back();
}

bool PXM_IsMaskSubtypeStreamPath(const KVB_StreamIDPath& path) {
    qzhost::RequireUIThread("PXM_IsMaskSubtypeStreamPath");
    return path.InsideMask();
}
