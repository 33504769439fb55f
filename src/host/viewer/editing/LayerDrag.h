// What a drag in the viewer does to a layer, for each tool: the selection tool moves the
// layer's Position (or, from a corner handle, its Scale), the anchor-point tool moves its
// Anchor Point (and its Position with it, so that the layer stays where it is drawn), the
// rotation tool turns it around its anchor point. A rotation adds up every turn of the
// pointer, so dragging round twice gives 720 degrees, not 0.
#pragma once

#include "canvas/CanvasMapping.h"
#include "composition/Layer.h"

namespace qzview {

/// The viewer's tools.
enum class Tool { Selection, AnchorPoint, Rotation };

class LayerDrag {
public:
    /// A drag of `property` of `layer` (Position, AnchorPoint, Scale, Rotation or
    /// Orientation) that began at composition point `at`.
    LayerDrag(const Layer& layer, Property property, CompositionPoint at);

    /// The layer's values for the pointer at `at`; `uniform` keeps a scale's proportions.
    /// Value() and Change() then give the dragged property's value and its change since
    /// the drag began.
    const LayerValues& Move(CompositionPoint at, bool uniform);

    int LayerId() const noexcept { return layerId_; }
    Property Dragged() const noexcept { return property_; }
    const LayerValues& Before() const noexcept { return before_; }
    const PropertyValue& Value() const noexcept { return value_; }
    const PropertyValue& Change() const noexcept { return change_; }

private:
    double PointerAngle(CompositionPoint at) const noexcept;

    int layerId_;
    Property property_;
    LayerValues before_;
    LayerValues values_;
    CompositionPoint from_;
    Affine start_;
    PropertyValue startValue_;
    PropertyValue value_{};
    PropertyValue change_{};
    double lastAngle_ = 0;
    double turned_ = 0;
};

} // namespace qzview
