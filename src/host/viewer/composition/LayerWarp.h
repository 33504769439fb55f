// How a drawn layer's pixels reach the composition's pixels: each composition pixel's
// centre is taken back into the layer by the inverse of the layer's transform, and the
// layer's pixels around that point are weighed with a triangle filter (bilinear when the
// layer is not made smaller; widened by the shrinking when it is). This is the image
// library's warp with its "triangle" filter and black beyond the layer's edges, computed
// in the same single-precision steps, so that one composition pixel computed on its own is
// the very pixel of a full-resolution warp, and a region of them is that region of it.
//
// A layer seen in perspective (a projective transform) is warped the same way with the
// library's steps for a full 3 x 3 matrix: the pixel centre's homogeneous point is divided
// by its w, and the filter widens at each pixel by the derivatives of that division (how
// far the layer point moves for one composition pixel along x and along y), so far parts
// of a layer are filtered more widely than near ones. Unlike the library's warp, pixels
// whose w is not positive (where the layer would be seen behind the camera) stay
// transparent black. Near the vanishing line of a layer's plane the footprints grow
// without bound; a pixel whose footprint holds more than about a million taps is filtered
// from the layer pixels it reaches over the closed-form total of its weights, equal to the
// library's value but for rounding, instead of visiting every tap.
#pragma once

#include <array>
#include <vector>

#include "Layer.h"
#include "Projective.h"

namespace qzview {

/// A rectangle of whole pixels: columns x0 to x1 - 1, rows y0 to y1 - 1.
struct PixelRect {
    int x0 = 0;
    int y0 = 0;
    int x1 = 0;
    int y1 = 0;

    int Width() const noexcept { return x1 > x0 ? x1 - x0 : 0; }
    int Height() const noexcept { return y1 > y0 ? y1 - y0 : 0; }
    bool Empty() const noexcept { return x1 <= x0 || y1 <= y0; }
    PixelRect Intersect(const PixelRect& other) const noexcept;

    bool operator==(const PixelRect&) const = default;
};

/// Layer pixels ready to be resampled: red, green, blue and alpha floats of the pixels of
/// `rect` (rows top to bottom); the layer's other pixels count as transparent black.
struct LayerPatch {
    PixelRect rect;
    std::vector<float> values;

    const float* At(int x, int y) const noexcept {
        return values.data() +
               (static_cast<std::size_t>(y - rect.y0) * static_cast<std::size_t>(rect.Width()) +
                static_cast<std::size_t>(x - rect.x0)) *
                   4;
    }
};

/// How widely the triangle filter reads around a layer point: one over its scale along
/// each axis of the layer (at least 1), and how far it reaches along each.
struct FilterReach {
    float dsInv = 1;
    float dtInv = 1;
    float radiusS = 1;
    float radiusT = 1;
};

class LayerWarp {
public:
    /// The warp of a layer placed by `transform`. A transform without an inverse (a layer
    /// seen edge-on) reaches no composition pixel.
    explicit LayerWarp(const Affine& transform) noexcept;
    explicit LayerWarp(const Projective& transform) noexcept;

    /// Whether the layer reaches any pixel at all.
    bool Visible() const noexcept { return visible_; }
    /// Whether the transform moves the layer by whole pixels only, and by how many: the
    /// layer's pixels then land on composition pixels unchanged.
    bool WholePixelShift(int& dx, int& dy) const noexcept;
    /// The layer pixels that the filter reads for the composition pixels of `region`
    /// (not clipped to the layer).
    PixelRect Footprint(const PixelRect& region) const noexcept;
    /// The filtered values at the composition pixels of row `y` from column `x0` to
    /// `x1 - 1`, four floats each, from `patch`, whose rectangle must hold every layer pixel
    /// of Footprint({x0, y, x1, y + 1}) that lies in the layer.
    void SampleRow(int y, int x0, int x1, const LayerPatch& patch, float* out) const noexcept;

private:
    void SampleAffine(int x, int y, const LayerPatch& patch, float* out) const noexcept;
    void SampleProjective(int x, int y, const LayerPatch& patch, float* out) const noexcept;

    bool visible_ = false;
    /// Whether the transform is projective (its bottom row is not 0, 0, 1).
    bool projective_ = false;
    bool shift_ = false;
    int dx_ = 0;
    int dy_ = 0;
    // The inverse of the transform in single precision as the image library takes it
    // (row vectors: [s t 1] = [x y 1] M^-1).
    std::array<std::array<float, 3>, 3> inverse_{};
    /// For an affine transform, the filter's reach, the same at every pixel.
    FilterReach reach_;
};

} // namespace qzview
