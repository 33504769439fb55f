// A layer of the viewer's composition: an image (or a camera, which is not drawn) with the
// transform properties that a person drags in the viewer or scrubs in the Layer Properties
// dock. Anchor Point, Position and Scale have two components on a 2-D layer and three on a
// 3-D one (and on a camera); a 3-D layer also has Orientation and X and Y Rotation. A layer
// may carry one rectangular mask with its opacity, feather and expansion.
//
// A drawn layer places its pixels by one affine transform: a point p of the layer
// (continuous pixel coordinates, 0,0 the top-left corner of the first pixel) goes to
// R * S * (p - anchor) + position, where S is the scale in percent and R the rotation.
// The turn and the scale act on the pixels as they are meant to be seen: a pixel of the
// layer is its pixel aspect wide and 1 tall, a pixel of the composition the composition's
// pixel aspect wide, so the point goes to Kc^-1 * (R * S * Kl * (p - anchor)) + position
// with Kl = diag(layer aspect, 1) and Kc = diag(composition aspect, 1), and a turn stays a
// turn on the screen. With square pixels both are the identity.
// Without a camera a 3-D layer is seen by an orthographic camera looking down the z axis,
// so its x and y rotations and its depth change how it is drawn but never its size by
// distance; a camera layer (Camera.h) sees 3-D layers in perspective instead.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "LayerImage.h"
#include "Space3.h"

namespace qzview {

/// The pixel aspect that is drawn for `aspect`: `aspect` itself from 1/16 to 16, the nearer
/// of those bounds beyond them, and 1 for a value that is not a positive number.
double DrawnAspect(double aspect) noexcept;

/// The layer kinds of the host's project model.
enum class LayerKind : std::int32_t { Visual = 0, Camera = 1 };

/// The properties of a layer, in the order the Layer Properties dock lists them.
enum class Property : std::uint8_t {
    AnchorPoint, // a camera's Point of Interest
    Position,
    Scale,
    Orientation,
    RotationX,
    RotationY,
    Rotation, // Z rotation on a 3-D layer
    Opacity,
    MaskOpacity,
    MaskFeather,
    MaskExpansion,
    /// A camera's distance at which a layer is shown at 100 %, in pixels.
    Zoom,
};

/// The smallest Zoom a camera takes.
inline constexpr double kMinimumZoom = 1.0;

/// A property's value: up to three components (the unused ones are 0).
using PropertyValue = std::array<double, 3>;

/// One rectangular mask in layer pixels.
struct RectMask {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    /// Percent: scales the mask's coverage.
    double opacity = 100;
    /// Pixels over which the edge goes from covered to uncovered.
    double feather = 0;
    /// Pixels by which the rectangle grows on every side (shrinks when negative).
    double expansion = 0;

    bool operator==(const RectMask&) const = default;
};

/// Every value that an edit of a layer can change, so that an edit is undone by putting
/// the values from before it back.
struct LayerValues {
    bool threeD = false;
    PropertyValue anchor{};
    PropertyValue position{};
    PropertyValue scale{100, 100, 100};
    /// Degrees, each in [0, 360).
    PropertyValue orientation{};
    double rotationX = 0;
    double rotationY = 0;
    double rotation = 0;
    double opacity = 100;
    std::optional<RectMask> mask;
    /// A camera's Zoom (pixels, at least kMinimumZoom); unused on other layers.
    double zoom = 0;

    bool operator==(const LayerValues&) const = default;
};

struct Layer {
    /// Stable for the layer's life: undo steps and the docks name layers by it.
    int id = 0;
    std::string name;
    LayerKind kind = LayerKind::Visual;
    /// The pixels; null for a camera.
    std::shared_ptr<const LayerImage> image;
    LayerValues values;
    /// What Reset Transform puts back (the values the layer was made with).
    LayerValues defaults;
    /// A hidden layer is neither drawn nor measured: the composite leaves it out.
    bool visible = true;

    /// Whether the layer is drawn: a visual layer with pixels that is not hidden.
    bool Drawn() const noexcept { return HasPixels() && visible; }
    /// Whether the layer has pixels (a visual layer, hidden or not).
    bool HasPixels() const noexcept { return kind == LayerKind::Visual && image != nullptr; }
    /// Whether the layer's points have three components: a 3-D layer or a camera.
    bool ThreeD() const noexcept { return kind != LayerKind::Visual || values.threeD; }
    /// The size of the layer's frame, which its transform places (its pixels may lie
    /// inside it, around it or beside it).
    int Width() const noexcept { return image ? image->frameWidth : 0; }
    int Height() const noexcept { return image ? image->frameHeight : 0; }
    /// How many times wider than tall the layer's pixels are shown (1 for a camera).
    double PixelAspect() const noexcept { return image ? DrawnAspect(image->pixelAspect) : 1.0; }
};

/// The properties that `layer` has, in the dock's order.
std::vector<Property> PropertiesOf(const Layer& layer);
/// The property's name as the dock shows it ("Point of Interest" for a camera's anchor
/// point, "Z Rotation" for a 3-D layer's rotation).
std::string PropertyName(const Layer& layer, Property property);
/// The host's match name of the property's stream ("POSITION", "MASK_OPACITY"...).
const char* MatchName(Property property);
/// Whether the property belongs to the layer's mask.
bool IsMaskProperty(Property property) noexcept;
/// 1, 2 or 3.
int Components(const Layer& layer, Property property) noexcept;

PropertyValue GetProperty(const LayerValues& values, Property property) noexcept;
/// Sets the property, keeping it in its range (RangeOf; a camera's Zoom from kMinimumZoom,
/// orientation in [0, 360)).
void SetProperty(LayerValues& values, Property property, const PropertyValue& value) noexcept;

/// A 2-D affine transform: x' = a x + c y + e, y' = b x + d y + f.
struct Affine {
    double a = 1, b = 0, c = 0, d = 1, e = 0, f = 0;

    bool IsIntegerTranslation() const noexcept;
    std::array<double, 2> Apply(double x, double y) const noexcept;
    /// The inverse; nullopt when the transform has no inverse (a layer seen edge-on).
    std::optional<Affine> Inverse() const noexcept;
};

/// The turn of a layer: its Z rotation on a 2-D layer; on a 3-D layer (or a camera) its
/// X, Y and Z rotations after its orientation.
Matrix3 RotationOf(const Layer& layer) noexcept;
/// Where a drawn layer's pixels go without a camera in a composition whose pixels are
/// `composition_aspect` times as wide as tall.
Affine LayerToComposition(const Layer& layer, double composition_aspect = 1.0) noexcept;
/// The corners of a `width` x `height` layer placed by `transform`, in the composition:
/// top-left, top-right, bottom-right, bottom-left.
std::array<std::array<double, 2>, 4> Corners(const Affine& transform, int width,
                                             int height) noexcept;
/// The mask's coverage (0 to 1) at the centre of layer pixel `x`, `y`.
float MaskCoverage(const RectMask& mask, int x, int y) noexcept;

} // namespace qzview
