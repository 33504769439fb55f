// The viewer's composition: the opened images as layers, the newest on top, over a
// transparent black background, and any cameras (which are not drawn). The composition
// takes the first image's size. Its pixels are the working values that the Info palette
// reads: straight colour with alpha, in floats.
//
// Each drawn layer is multiplied by its alpha, its mask and its opacity, moved into the
// composition by its transform with OpenImageIO's affine warp (or pasted, when the
// transform is a whole-pixel translation, which a warp would give exactly), composited
// with `over`, and divided by alpha again. A warped layer is kept: when it is next moved
// by whole pixels and nothing else changed (a drag, mostly), the kept pixels are pasted
// at the new place instead of being resampled again.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <vector>

#include <OpenImageIO/imagebuf.h>

#include "Layer.h"

namespace qzview {

/// Red, green, blue, alpha.
using WorkingPixel = std::array<float, 4>;

class Composition {
public:
    /// Adds `image` as the new top layer, centred in the composition (the first one sets
    /// the composition's size and so covers it exactly). Returns the layer's id.
    int AddImage(LayerImage image);
    /// Adds a camera looking at the composition's centre. Returns its id.
    int AddCamera();

    const std::vector<Layer>& Layers() const noexcept { return layers_; }
    bool Empty() const noexcept { return layers_.empty(); }
    /// The layer with `id`, or null.
    const Layer* Find(int id) const noexcept;
    /// Gives layer `id` new values; the pixels follow at the next Render().
    void SetValues(int id, const LayerValues& values);
    /// Where layer `id` is drawn: LayerToComposition of its current values, kept with
    /// them (the pointer's hit test asks for it at every move).
    const Affine& Transform(int id) const noexcept;

    int Width() const noexcept { return width_; }
    int Height() const noexcept { return height_; }

    /// Composites again if a layer changed since the last time; returns whether it did.
    bool Render();

    /// The composited pixel at column `x`, row `y`; transparent black outside the
    /// composition.
    WorkingPixel PixelAt(int x, int y) const noexcept;
    /// The topmost drawn layer whose pixels cover composition point `x`, `y`, or null.
    const Layer* LayerAt(double x, double y) const noexcept;

    /// How many times a layer was resampled so far (a kept warp that is pasted again does
    /// not count).
    int Warps() const noexcept { return warps_; }

    /// The composited pixels: Width() x Height() x 4 floats, rows top to bottom.
    const std::vector<float>& Pixels() const noexcept { return pixels_; }

private:
    /// A layer's pixels multiplied by alpha, mask and opacity, kept until those change.
    struct Prepared {
        OIIO::ImageBuf pixels;
        double opacity = -1;
        std::optional<RectMask> mask;
        /// Counts the times the pixels were made, so that what was made from them knows
        /// when they changed.
        int generation = 0;
    };
    /// A layer's pixels as last warped into the composition, over the part of the
    /// composition that they reached then.
    struct Warped {
        OIIO::ImageBuf pixels;
        /// The same divided by alpha, made when a lone layer is drawn from it.
        OIIO::ImageBuf straight;
        Affine transform;
        int generation = -1;
    };
    Layer& Add(Layer layer);
    /// Keeps a layer's transform and its inverse (none when it is seen edge-on).
    struct Placement {
        Affine transform;
        std::optional<Affine> inverse;
    };
    void KeepPlacement(const Layer& layer);
    const Prepared& Prepare(const Layer& layer);
    /// Draws `layer` into `target` (composition-sized, transparent black before), its
    /// colour multiplied by alpha; with `straight`, it may draw it divided by alpha (its
    /// own values, when nothing scales them) instead, and says whether it did.
    bool Place(const Layer& layer, OIIO::ImageBuf& target, bool straight = false);
    void Composite();

    std::vector<Layer> layers_;
    std::map<int, Placement> placements_;
    std::map<int, Prepared> prepared_;
    std::map<int, Warped> warped_;
    int nextId_ = 1;
    int width_ = 0;
    int height_ = 0;
    bool dirty_ = false;
    int warps_ = 0;
    std::vector<float> pixels_;
    OIIO::ImageBuf result_;
    OIIO::ImageBuf scratch_;
    OIIO::ImageBuf merged_;
};

} // namespace qzview
