#include "Composition.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include <OpenImageIO/imagebufalgo.h>

namespace qzview {

namespace {

/// The filter with which layers are resampled: bilinear, so that a layer moved by a
/// fraction of a pixel stays sharp.
constexpr const char* kWarpFilter = "triangle";

OIIO::ImageSpec RgbaLayout(int width, int height) {
    OIIO::ImageSpec format(width, height, 4, OIIO::TypeDesc::FLOAT);
    format.alpha_channel = 3;
    return format;
}

/// A view of a layer's straight pixels, read only.
OIIO::ImageBuf View(const LayerImage& image) {
    // The buffer is only read: ImageBuf takes a plain pointer for the pixels it wraps.
    return OIIO::ImageBuf(RgbaLayout(image.width, image.height),
                          const_cast<float*>(image.rgba.data()));
}

void Check(bool ok, const OIIO::ImageBuf& buffer, const char* what) {
    if (!ok || buffer.has_error()) {
        throw std::runtime_error(std::string("composite: ") + what + ": " + buffer.geterror());
    }
}

/// The whole-pixel region of `target` that `from` pasted at `dx`, `dy` reaches, in the
/// source's pixels.
OIIO::ROI PasteRegion(int width, int height, int dx, int dy, int target_w, int target_h) {
    const int x0 = std::max(0, -dx);
    const int y0 = std::max(0, -dy);
    const int x1 = std::min(width, target_w - dx);
    const int y1 = std::min(height, target_h - dy);
    return OIIO::ROI(x0, std::max(x0, x1), y0, std::max(y0, y1), 0, 1, 0, 4);
}

} // namespace

Layer& Composition::Add(Layer layer) {
    layer.id = nextId_++;
    layers_.push_back(std::move(layer));
    KeepPlacement(layers_.back());
    dirty_ = true;
    return layers_.back();
}

void Composition::KeepPlacement(const Layer& layer) {
    Placement& placement = placements_[layer.id];
    placement.transform = LayerToComposition(layer);
    placement.inverse = placement.transform.Inverse();
}

const Affine& Composition::Transform(int id) const noexcept {
    static const Affine identity;
    const auto found = placements_.find(id);
    return found != placements_.end() ? found->second.transform : identity;
}

int Composition::AddImage(LayerImage image) {
    if (layers_.empty() || width_ == 0) {
        width_ = image.width;
        height_ = image.height;
    }
    Layer layer;
    layer.name = image.name;
    layer.kind = LayerKind::Visual;
    layer.values.anchor = {image.width / 2.0, image.height / 2.0, 0};
    layer.values.position = {width_ / 2.0, height_ / 2.0, 0};
    layer.defaults = layer.values;
    layer.image = std::make_shared<const LayerImage>(std::move(image));
    return Add(std::move(layer)).id;
}

int Composition::AddCamera() {
    int cameras = 0;
    for (const Layer& layer : layers_) {
        cameras += layer.kind == LayerKind::Camera ? 1 : 0;
    }
    Layer camera;
    camera.name = "Camera " + std::to_string(cameras + 1);
    camera.kind = LayerKind::Camera;
    // The camera looks at the composition's centre from in front of it.
    camera.values.anchor = {width_ / 2.0, height_ / 2.0, 0};
    camera.values.position = {width_ / 2.0, height_ / 2.0, -std::max(800.0, width_ * 1.5)};
    camera.defaults = camera.values;
    return Add(std::move(camera)).id;
}

const Layer* Composition::Find(int id) const noexcept {
    for (const Layer& layer : layers_) {
        if (layer.id == id) {
            return &layer;
        }
    }
    return nullptr;
}

void Composition::SetValues(int id, const LayerValues& values) {
    for (Layer& layer : layers_) {
        if (layer.id == id && !(layer.values == values)) {
            layer.values = values;
            KeepPlacement(layer);
            dirty_ = dirty_ || layer.Drawn();
        }
    }
}

bool Composition::Render() {
    if (!dirty_) {
        return false;
    }
    dirty_ = false;
    Composite();
    return true;
}

const Composition::Prepared& Composition::Prepare(const Layer& layer) {
    Prepared& prepared = prepared_[layer.id];
    if (prepared.pixels.initialized() && prepared.opacity == layer.values.opacity &&
        prepared.mask == layer.values.mask) {
        return prepared;
    }
    ++prepared.generation;
    const LayerImage& image = *layer.image;
    Check(OIIO::ImageBufAlgo::premult(prepared.pixels, View(image)), prepared.pixels, "premult");
    const float opacity = static_cast<float>(std::clamp(layer.values.opacity / 100.0, 0.0, 1.0));
    if (opacity != 1.0f || layer.values.mask) {
        // The mask and the opacity scale every channel of the premultiplied pixels.
        auto* p = static_cast<float*>(prepared.pixels.localpixels());
        for (int y = 0; y < image.height; ++y) {
            for (int x = 0; x < image.width; ++x, p += 4) {
                const float k =
                    opacity * (layer.values.mask ? MaskCoverage(*layer.values.mask, x, y) : 1.0f);
                p[0] *= k;
                p[1] *= k;
                p[2] *= k;
                p[3] *= k;
            }
        }
    }
    prepared.opacity = layer.values.opacity;
    prepared.mask = layer.values.mask;
    return prepared;
}

bool Composition::Place(const Layer& layer, OIIO::ImageBuf& target, bool straight) {
    const Placement& placement = placements_.at(layer.id);
    const Affine& m = placement.transform;
    if (m.IsIntegerTranslation()) {
        // A whole-pixel move is a paste; with nothing scaling the layer's values, its
        // straight pixels are pasted as they are.
        const bool own = straight && layer.values.opacity >= 100.0 && !layer.values.mask;
        const OIIO::ImageBuf& source = own ? View(*layer.image) : Prepare(layer).pixels;
        const int dx = static_cast<int>(m.e);
        const int dy = static_cast<int>(m.f);
        const OIIO::ROI from = PasteRegion(layer.Width(), layer.Height(), dx, dy, width_, height_);
        if (from.width() > 0 && from.height() > 0) {
            Check(OIIO::ImageBufAlgo::paste(target, dx, dy, 0, 0, source, from), target, "paste");
        }
        return own;
    }
    if (!placement.inverse) {
        return false; // seen edge-on: nothing to draw
    }
    const Prepared& prepared = Prepare(layer);
    const OIIO::ImageBuf& source = prepared.pixels;
    // Only the composition pixels that the layer's corners enclose (and the filter's
    // reach around them) are resampled.
    double x0 = 1e300;
    double y0 = 1e300;
    double x1 = -1e300;
    double y1 = -1e300;
    for (const auto& [px, py] : Corners(m, layer.Width(), layer.Height())) {
        x0 = std::min(x0, px);
        y0 = std::min(y0, py);
        x1 = std::max(x1, px);
        y1 = std::max(y1, py);
    }
    // The composition pixels that the corners enclose, with the filter's reach, within
    // `margin` pixels around the composition.
    const auto bounds = [&](int margin) {
        const auto clampTo = [margin](double v, int limit) {
            return static_cast<int>(
                std::clamp(v, -static_cast<double>(margin), static_cast<double>(limit + margin)));
        };
        return OIIO::ROI(clampTo(std::floor(x0) - 2, width_), clampTo(std::ceil(x1) + 2, width_),
                         clampTo(std::floor(y0) - 2, height_), clampTo(std::ceil(y1) + 2, height_),
                         0, 1, 0, 4);
    };
    const OIIO::ROI region = bounds(0);
    if (region.width() <= 0 || region.height() <= 0) {
        return false;
    }
    Warped& warped = warped_[layer.id];
    const Affine& kept = warped.transform;
    // Only the translation changed since the layer was last warped: it is being moved.
    const bool moved = warped.pixels.initialized() && warped.generation == prepared.generation &&
                       kept.a == m.a && kept.b == m.b && kept.c == m.c && kept.d == m.d;
    const double dx = m.e - kept.e;
    const double dy = m.f - kept.f;
    int sx = 0;
    int sy = 0;
    const OIIO::ROI kept_region = warped.pixels.initialized() ? warped.pixels.roi() : OIIO::ROI();
    if (moved && dx == std::round(dx) && dy == std::round(dy) && std::abs(dx) < 1e7 &&
        std::abs(dy) < 1e7 && region.xbegin >= kept_region.xbegin + dx &&
        region.xend <= kept_region.xend + dx && region.ybegin >= kept_region.ybegin + dy &&
        region.yend <= kept_region.yend + dy) {
        // Moved by whole pixels, and the kept pixels reach the whole of the new place:
        // shifted, they are the warp there.
        sx = static_cast<int>(dx);
        sy = static_cast<int>(dy);
    } else {
        // Imath's row-vector convention: [x' y' 1] = [x y 1] M.
        const float matrix[3][3] = {
            {static_cast<float>(m.a), static_cast<float>(m.b), 0.0f},
            {static_cast<float>(m.c), static_cast<float>(m.d), 0.0f},
            {static_cast<float>(m.e), static_cast<float>(m.f), 1.0f},
        };
        // The warp goes into a buffer of its own (its pixels keep their composition
        // coordinates), which is kept. A layer that is being moved is warped a margin
        // beyond the composition, so that the next moves find its pixels there.
        const OIIO::ROI covered =
            moved ? bounds(std::max(32, std::max(width_, height_) / 4)) : region;
        auto layout = RgbaLayout(covered.width(), covered.height());
        layout.x = covered.xbegin;
        layout.y = covered.ybegin;
        warped.pixels.reset(layout);
        Check(OIIO::ImageBufAlgo::warp(warped.pixels, source, matrix, kWarpFilter, 0.0f, false,
                                       OIIO::ImageBuf::WrapBlack, covered),
              warped.pixels, "warp");
        ++warps_;
        warped.transform = m;
        warped.generation = prepared.generation;
        warped.straight.clear();
    }
    if (straight && !warped.straight.initialized()) {
        Check(OIIO::ImageBufAlgo::unpremult(warped.straight, warped.pixels), warped.straight,
              "unpremult");
    }
    const OIIO::ImageBuf& drawn = straight ? warped.straight : warped.pixels;
    const OIIO::ROI from = OIIO::roi_intersection(
        drawn.roi(), OIIO::ROI(-sx, width_ - sx, -sy, height_ - sy, 0, 1, 0, 4));
    if (from.width() > 0 && from.height() > 0) {
        Check(OIIO::ImageBufAlgo::paste(target, sx, sy, 0, 0, drawn, from), target, "paste");
    }
    return straight;
}

void Composition::Composite() {
    const std::size_t count = static_cast<std::size_t>(width_) * height_ * 4;
    pixels_.resize(count);
    std::vector<const Layer*> drawn;
    for (const Layer& layer : layers_) {
        if (layer.Drawn()) {
            drawn.push_back(&layer);
        }
    }
    if (drawn.empty() || count == 0) {
        std::fill(pixels_.begin(), pixels_.end(), 0.0f);
        return;
    }
    const auto layout = RgbaLayout(width_, height_);
    if (drawn.size() == 1) {
        // One layer over transparent black is the layer itself: placed straight into the
        // pixels (a whole layer moved by whole pixels gives its values exactly), or
        // divided by alpha there.
        std::fill(pixels_.begin(), pixels_.end(), 0.0f);
        OIIO::ImageBuf out(layout, pixels_.data());
        if (!Place(*drawn.front(), out, true)) {
            Check(OIIO::ImageBufAlgo::unpremult(out, out), out, "unpremult");
        }
        return;
    }
    if (!result_.initialized() || result_.roi().width() != width_ ||
        result_.roi().height() != height_) {
        result_.reset(layout);
        scratch_.reset(layout);
        merged_.reset(layout);
    }
    OIIO::ImageBufAlgo::zero(result_);
    Place(*drawn.front(), result_);
    for (std::size_t i = 1; i < drawn.size(); ++i) {
        OIIO::ImageBufAlgo::zero(scratch_);
        Place(*drawn[i], scratch_);
        Check(OIIO::ImageBufAlgo::over(merged_, scratch_, result_), merged_, "over");
        result_.swap(merged_);
    }
    OIIO::ImageBuf out(layout, pixels_.data());
    Check(OIIO::ImageBufAlgo::unpremult(out, result_), out, "unpremult");
}

WorkingPixel Composition::PixelAt(int x, int y) const noexcept {
    if (x < 0 || y < 0 || x >= width_ || y >= height_ || pixels_.empty()) {
        return {0, 0, 0, 0};
    }
    const float* p = pixels_.data() + (static_cast<std::size_t>(y) * width_ + x) * 4;
    return {p[0], p[1], p[2], p[3]};
}

const Layer* Composition::LayerAt(double x, double y) const noexcept {
    for (auto it = layers_.rbegin(); it != layers_.rend(); ++it) {
        if (!it->Drawn()) {
            continue;
        }
        const std::optional<Affine>& inverse = placements_.at(it->id).inverse;
        if (!inverse) {
            continue;
        }
        const auto [u, v] = inverse->Apply(x, y);
        if (u >= 0 && v >= 0 && u < it->Width() && v < it->Height()) {
            return &*it;
        }
    }
    return nullptr;
}

} // namespace qzview
