// The viewer's composition: the opened images as layers, the newest on top, over a
// transparent black background, and any cameras (which are not drawn; the top-most one
// sees the 3-D layers in perspective). Layers may be hidden, deleted (and put back in their
// place), and moved up and down the stack, and show another of their images' channel sets.
// The composition is the first image's frame (its display window): composition pixel 0,0
// is the frame's top-left pixel. Its pixels are the working values that the Info palette
// reads: straight colour with alpha, in floats. No buffer of them is kept: a pixel, or a
// region of them, is composited from the layers' own pixels when it is asked for.
// It takes the first image's pixel aspect too (how much wider than tall a pixel is shown).
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "CompositeRegion.h"
#include "Layer.h"
#include "Projective.h"

namespace qzview {

/// Red, green, blue, alpha.
using WorkingPixel = std::array<float, 4>;

/// A layer taken out of the composition, with its place in the stack (0: the bottom), so
/// that it can be put back as it was.
struct RemovedLayer {
    Layer layer;
    std::size_t index = 0;
};

class Composition {
public:
    /// Adds `image` as the new top layer, centred in the composition (the first one sets
    /// the composition's size and so covers it exactly). Returns the layer's id.
    int AddImage(LayerImage image);
    /// Adds a camera looking at the composition's centre from Zoom in front of it (so that
    /// the view does not change). Returns its id.
    int AddCamera();

    const std::vector<Layer>& Layers() const noexcept { return layers_; }
    bool Empty() const noexcept { return layers_.empty(); }
    /// The layer with `id`, or null.
    const Layer* Find(int id) const noexcept;
    /// Gives layer `id` new values.
    void SetValues(int id, const LayerValues& values);
    /// Shows or hides layer `id`.
    void SetVisible(int id, bool visible);
    /// Takes layer `id` out; none when there is no such layer.
    std::optional<RemovedLayer> Remove(int id);
    /// Puts a removed layer back at its index (or on top when the stack is shorter), with
    /// its id and values.
    void Restore(RemovedLayer removed);
    /// The place of layer `id` in the stack (0: the bottom), or none.
    std::optional<std::size_t> IndexOf(int id) const noexcept;
    /// Moves layer `id` to `index` in the stack (0: the bottom; clamped to the top).
    /// Returns whether the order changed.
    bool Move(int id, std::size_t index);
    /// Where layer `id` is drawn: LayerThroughCamera of its current values and the active
    /// camera, kept with them (the pointer's hit test asks for it at every move). It
    /// places the layer's frame.
    const Projective& Transform(int id) const noexcept;
    /// Where layer `id`'s pixels are drawn: Transform after the move of the pixels' place
    /// in the frame.
    const Projective& PixelTransform(int id) const noexcept;
    /// Shows channel set `set` of layer `id`'s image (an index of its SetNames()). Returns
    /// whether the layer shows another set now; throws std::out_of_range for a set that
    /// the image does not have.
    bool SetChannelSet(int id, int set);
    /// Reads layer `id`'s file values as being in the colour space `space`, which
    /// `to_working` turns into working values. Returns whether the layer's colour space
    /// changed.
    bool SetColourSpace(int id, const std::string& space,
                        std::shared_ptr<const qzhost::ColourTransform> to_working);

    int Width() const noexcept { return width_; }
    int Height() const noexcept { return height_; }
    /// How many times wider than tall the composition's pixels are shown.
    double PixelAspect() const noexcept { return pixelAspect_; }

    /// Counts the changes to what the composition shows (a layer added, removed, moved,
    /// hidden or shown, new values), so
    /// that what was made from it knows when it is out of date.
    std::uint64_t Generation() const noexcept { return generation_; }
    /// What the compositor reads, as the composition is now (kept until it changes, and
    /// shared with the threads that composite from it).
    std::shared_ptr<const CompositionSnapshot> Snapshot() const;

    /// The composited pixel at column `x`, row `y`, computed from the layers' pixels;
    /// transparent black outside the composition.
    WorkingPixel PixelAt(int x, int y) const;
    /// The topmost drawn layer whose pixels cover composition point `x`, `y`, or null.
    const Layer* LayerAt(double x, double y) const noexcept;

private:
    Layer& Add(Layer layer);
    /// What the composition shows changed: the snapshot is made again when asked for.
    void Changed() noexcept;
    /// Keeps a layer's transform, its inverse (none when it is seen edge-on) and the warp
    /// that the compositor takes its pixels by.
    struct Placement {
        Projective transform;
        Projective pixels;
        std::optional<Projective> inverse;
        LayerWarp warp{Affine{}};
    };
    void KeepPlacement(const Layer& layer);
    /// Places every layer again (the active camera or its values changed).
    void KeepPlacements();
    std::vector<Layer> layers_;
    std::map<int, Placement> placements_;
    int nextId_ = 1;
    int width_ = 0;
    int height_ = 0;
    double pixelAspect_ = 1.0;
    std::uint64_t generation_ = 0;
    mutable std::shared_ptr<const CompositionSnapshot> snapshot_;
};

} // namespace qzview
