#include "CompositeRegion.h"

#include <algorithm>

namespace qzview {

namespace {

/// Regions are composited in tiles of this many pixels square, so that the layer pixels
/// read for a tile stay few even when a layer is turned.
constexpr int kTile = 64;

/// Fills `patch` with the layer's pixels of `rect` (inside the layer) ready to be laid
/// over others: multiplied by alpha, then by the mask's coverage and the opacity; with
/// `straight`, its working values as they are.
void Prepare(const DrawnLayer& layer, const PixelRect& rect, bool straight, LayerPatch& patch) {
    patch.rect = rect;
    const auto width = static_cast<std::size_t>(rect.Width());
    patch.values.resize(width * static_cast<std::size_t>(rect.Height()) * 4);
    float* p = patch.values.data();
    const bool scaled = layer.opacity != 1.0f || layer.mask.has_value();
    for (int y = rect.y0; y < rect.y1; ++y) {
        layer.image->WorkingRow(y, rect.x0, rect.x1, p);
        if (straight) {
            p += width * 4;
            continue;
        }
        for (int x = rect.x0; x < rect.x1; ++x, p += 4) {
            const float alpha = p[3];
            if (alpha != 1.0f) {
                p[0] *= alpha;
                p[1] *= alpha;
                p[2] *= alpha;
            }
            if (scaled) {
                // The mask lies in the frame, where the pixels lie at dataX, dataY.
                const float k =
                    layer.opacity * (layer.mask ? MaskCoverage(*layer.mask, x + layer.image->dataX,
                                                               y + layer.image->dataY)
                                                : 1.0f);
                p[0] *= k;
                p[1] *= k;
                p[2] *= k;
                p[3] *= k;
            }
        }
    }
}

/// Divides colour by alpha where alpha is neither 0 nor 1.
void Unpremultiply(float* p, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i, p += 4) {
        const float alpha = p[3];
        if (alpha != 0.0f && alpha != 1.0f) {
            p[0] = p[0] / alpha;
            p[1] = p[1] / alpha;
            p[2] = p[2] / alpha;
        }
    }
}

/// `layer` (tile-sized) over `under`, in place: layer + (1 - alpha) x under.
void Over(const float* layer, float* under, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i, layer += 4, under += 4) {
        const float a = layer[3];
        const float alpha = a >= 0.0f ? (a <= 1.0f ? a : 1.0f) : 0.0f;
        const float keep = 1.0f - alpha;
        under[0] = layer[0] + keep * under[0];
        under[1] = layer[1] + keep * under[1];
        under[2] = layer[2] + keep * under[2];
        under[3] = layer[3] + keep * under[3];
    }
}

/// One layer's values at the pixels of `tile` into `out` (tile-sized, premultiplied, or
/// straight with `straight`); false when the layer reaches none of them (they are zero).
bool Resample(const DrawnLayer& layer, const PixelRect& tile, bool straight,
              CompositeScratch& scratch, float* out) {
    if (!layer.warp.Visible()) {
        return false;
    }
    const PixelRect bounds{0, 0, layer.image->width, layer.image->height};
    int dx = 0;
    int dy = 0;
    const bool shift = layer.warp.WholePixelShift(dx, dy);
    const PixelRect needed = shift
                                 ? PixelRect{tile.x0 - dx, tile.y0 - dy, tile.x1 - dx, tile.y1 - dy}
                                 : layer.warp.Footprint(tile);
    const PixelRect rect = needed.Intersect(bounds);
    if (rect.Empty()) {
        return false;
    }
    Prepare(layer, rect, straight, scratch.patch);
    const LayerPatch& patch = scratch.patch;
    float* p = out;
    if (!shift) {
        const auto row = static_cast<std::size_t>(tile.Width()) * 4;
        for (int y = tile.y0; y < tile.y1; ++y, p += row) {
            layer.warp.SampleRow(y, tile.x0, tile.x1, patch, p);
        }
        return true;
    }
    for (int y = tile.y0; y < tile.y1; ++y) {
        for (int x = tile.x0; x < tile.x1; ++x, p += 4) {
            // On whole pixels the layer's pixel lands unchanged.
            const int sx = x - dx;
            const int sy = y - dy;
            if (sx >= rect.x0 && sx < rect.x1 && sy >= rect.y0 && sy < rect.y1) {
                std::copy_n(patch.At(sx, sy), 4, p);
            } else {
                std::fill_n(p, 4, 0.0f);
            }
        }
    }
    return true;
}

void CompositeTile(const CompositionSnapshot& snapshot, const PixelRect& tile, AlphaForm form,
                   float* out, CompositeScratch& scratch) {
    const std::size_t count = static_cast<std::size_t>(tile.Width()) * tile.Height();
    std::fill_n(out, count * 4, 0.0f);
    const auto& layers = snapshot.layers;
    if (layers.size() == 1) {
        // A lone layer over transparent black is the layer itself; on whole pixels and
        // with nothing scaling its values, its own values.
        const DrawnLayer& layer = layers.front();
        int dx = 0;
        int dy = 0;
        const bool own =
            form == AlphaForm::Straight && layer.warp.WholePixelShift(dx, dy) && layer.own;
        if (Resample(layer, tile, own, scratch, out) && !own && form == AlphaForm::Straight) {
            Unpremultiply(out, count);
        }
        return;
    }
    scratch.layer.resize(count * 4);
    for (std::size_t i = 0; i < layers.size(); ++i) {
        // The bottom layer is laid on transparent black as it is; each next one over
        // what lies below it.
        float* target = i == 0 ? out : scratch.layer.data();
        if (Resample(layers[i], tile, false, scratch, target) && i > 0) {
            Over(scratch.layer.data(), out, count);
        }
    }
    if (form == AlphaForm::Straight) {
        Unpremultiply(out, count);
    }
}

} // namespace

DrawnLayer DrawnLayerOf(const Layer& layer, const LayerWarp& warp) {
    DrawnLayer drawn;
    drawn.image = layer.image;
    drawn.warp = warp;
    drawn.opacity = static_cast<float>(std::clamp(layer.values.opacity / 100.0, 0.0, 1.0));
    drawn.own = layer.values.opacity >= 100.0 && !layer.values.mask;
    drawn.mask = layer.values.mask;
    return drawn;
}

void CompositeRegion(const CompositionSnapshot& snapshot, const PixelRect& region, AlphaForm form,
                     float* out, CompositeScratch& scratch) {
    const auto width = static_cast<std::size_t>(region.Width());
    for (int ty = region.y0; ty < region.y1; ty += kTile) {
        for (int tx = region.x0; tx < region.x1; tx += kTile) {
            const PixelRect tile{tx, ty, std::min(tx + kTile, region.x1),
                                 std::min(ty + kTile, region.y1)};
            const auto tileWidth = static_cast<std::size_t>(tile.Width());
            scratch.sum.resize(tileWidth * static_cast<std::size_t>(tile.Height()) * 4);
            CompositeTile(snapshot, tile, form, scratch.sum.data(), scratch);
            for (int y = tile.y0; y < tile.y1; ++y) {
                std::copy_n(scratch.sum.data() +
                                static_cast<std::size_t>(y - tile.y0) * tileWidth * 4,
                            tileWidth * 4,
                            out + (static_cast<std::size_t>(y - region.y0) * width +
                                   static_cast<std::size_t>(tx - region.x0)) *
                                      4);
            }
        }
    }
}

std::array<float, 4> CompositePixel(const CompositionSnapshot& snapshot, int x, int y) {
    std::array<float, 4> pixel{};
    if (x < 0 || y < 0 || x >= snapshot.width || y >= snapshot.height) {
        return pixel;
    }
    thread_local CompositeScratch scratch;
    CompositeTile(snapshot, PixelRect{x, y, x + 1, y + 1}, AlphaForm::Straight, pixel.data(),
                  scratch);
    return pixel;
}

} // namespace qzview
