// What a drag in the viewer does to a layer, for each tool: the selection tool moves the
// layer's Position (or, from a corner handle, its Scale), the anchor-point tool moves its
// Anchor Point (and its Position with it, so that the layer stays where it is drawn), the
// rotation tool turns it around its anchor point. A rotation adds up every turn of the
// pointer, so dragging round twice gives 720 degrees, not 0.
//
// On a 3-D layer the rotation tool turns the Orientation as a trackball does, the layer's
// face following the pointer: moving down turns it about X (the top comes forward),
// moving right about Y (the left side comes forward), half a degree for each composition
// pixel; with Shift held the pointer's turns around the anchor point turn it about Z.
//
// In a composition of pixels wider or taller than square, the pointer's turns and its
// horizontal motion are measured as the composition is drawn (a composition pixel its
// pixel aspect wide), so that a layer turns with the pointer on the screen.
#pragma once

#include "canvas/CanvasMapping.h"
#include "composition/Layer.h"
#include "composition/Projective.h"

namespace qzview {

/// The viewer's tools.
enum class Tool { Selection, AnchorPoint, Rotation };

class LayerDrag {
public:
    /// Degrees of Orientation for each composition pixel the pointer moves down (across,
    /// for each composition pixel's height as drawn).
    static constexpr double kDegreesPerPixel = 0.5;

    /// A drag of `property` of `layer` (Position, AnchorPoint, Scale, Rotation or
    /// Orientation) that began at composition point `at`, the layer placed by `placed`
    /// (its transform through the active camera) in a composition whose pixels are
    /// `composition_aspect` times as wide as tall.
    LayerDrag(const Layer& layer, Property property, CompositionPoint at, const Projective& placed,
              double composition_aspect = 1.0);
    /// The same for a layer placed by LayerToComposition (no camera).
    LayerDrag(const Layer& layer, Property property, CompositionPoint at,
              double composition_aspect = 1.0);

    /// The layer's values for the pointer at `at`; `shift` (Shift held) keeps a scale's
    /// proportions and turns a 3-D layer's Orientation about Z. Value() and Change() then
    /// give the dragged property's value and its change since the drag began.
    const LayerValues& Move(CompositionPoint at, bool shift);

    int LayerId() const noexcept { return layerId_; }
    Property Dragged() const noexcept { return property_; }
    const LayerValues& Before() const noexcept { return before_; }
    const PropertyValue& Value() const noexcept { return value_; }
    const PropertyValue& Change() const noexcept { return change_; }

private:
    double PointerAngle(CompositionPoint at) const noexcept;
    /// The layer point under composition point `at`, none where the layer is not seen.
    std::optional<std::array<double, 2>> LayerPoint(CompositionPoint at) const noexcept;

    int layerId_;
    Property property_;
    LayerValues before_;
    LayerValues values_;
    CompositionPoint from_;
    /// Pixel heights per composition pixel along x.
    double aspect_;
    Projective start_;
    std::optional<Projective> startInverse_;
    /// Where the layer's pixels lie in the composition's space (LayerToSpace), its x in
    /// composition pixels as the Position's is.
    Matrix3 space_;
    /// Where the anchor point is seen.
    std::array<double, 2> anchorSeen_{};
    CompositionPoint last_;
    /// The Orientation's turns about X, Y and Z so far.
    PropertyValue turnedXYZ_{};
    PropertyValue startValue_;
    PropertyValue value_{};
    PropertyValue change_{};
    double lastAngle_ = 0;
    double turned_ = 0;
};

} // namespace qzview
