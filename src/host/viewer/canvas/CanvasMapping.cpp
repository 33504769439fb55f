#include "CanvasMapping.h"

#include <algorithm>
#include <cmath>

namespace qzview {

namespace {

/// Along one axis drawn `scale` screen pixels per composition pixel, with composition
/// position 0 at screen position `origin`: the composition position of screen position `s`.
double Along(double s, int origin, double scale) noexcept {
    // Where a composition pixel is 1/n of a screen pixel, multiplying by n is exact, where
    // dividing by the rounded 1/n would not be.
    if (scale < 1.0) {
        const double n = std::round(1.0 / scale);
        if (std::abs(n * scale - 1.0) < 1e-9) {
            return (s - origin) * n;
        }
    }
    return (s - origin) / scale;
}

/// The whole composition pixel at composition position `p` along one axis.
int PixelOf(double p) noexcept {
    return static_cast<int>(std::floor(p));
}

/// The composition pixels that screen pixel `s` shows along one axis (ColumnsAt).
std::pair<int, int> ShownPixels(int s, int origin, double scale) noexcept {
    if (scale >= 1.0) {
        const int p = PixelOf(Along(s + 0.5, origin, scale));
        return {p, p + 1};
    }
    // The pixels whose centres lie from the screen pixel's left edge up to (not including)
    // its right one: the first whose centre is at or after an edge.
    const auto first = [&](double edge) {
        return static_cast<int>(std::ceil(Along(edge, origin, scale) - 0.5));
    };
    return {first(s), first(s + 1.0)};
}

} // namespace

double CanvasMapping::NearestLevel(double zoom) {
    if (!(zoom > 0)) {
        return 1.0;
    }
    double best = kLevels.front();
    for (double level : kLevels) {
        if (std::abs(std::log(level / zoom)) < std::abs(std::log(best / zoom))) {
            best = level;
        }
    }
    return best;
}

void CanvasMapping::SetAspect(double aspect) noexcept {
    aspect = aspect > 0 && std::isfinite(aspect) ? aspect : 1.0;
    if (aspect != aspect_) {
        aspect_ = aspect;
        anchored_ = false;
    }
}

CompositionPoint CanvasMapping::ToComposition(int sx, int sy) const noexcept {
    return {Along(sx + 0.5, originX_, ScaleX()), Along(sy + 0.5, originY_, ScaleY())};
}

std::array<double, 2> CanvasMapping::ToScreen(CompositionPoint point) const noexcept {
    return {originX_ + point.x * ScaleX(), originY_ + point.y * ScaleY()};
}

void CanvasMapping::PixelAt(int sx, int sy, int& px, int& py) const noexcept {
    const CompositionPoint point = ToComposition(sx, sy);
    px = PixelOf(point.x);
    py = PixelOf(point.y);
}

std::pair<int, int> CanvasMapping::ColumnsAt(int sx) const noexcept {
    return ShownPixels(sx, originX_, ScaleX());
}

std::pair<int, int> CanvasMapping::RowsAt(int sy) const noexcept {
    return ShownPixels(sy, originY_, ScaleY());
}

void CanvasMapping::ZoomAround(double zoom, int sx, int sy) noexcept {
    if (!anchored_ || anchorX_ != sx || anchorY_ != sy) {
        anchor_ = ToComposition(sx, sy);
        anchorX_ = sx;
        anchorY_ = sy;
        anchored_ = true;
    }
    const CompositionPoint fixed = anchor_;
    zoom_ = zoom;
    originX_ = static_cast<int>(std::lround(sx + 0.5 - fixed.x * ScaleX()));
    originY_ = static_cast<int>(std::lround(sy + 0.5 - fixed.y * zoom_));
}

double CanvasMapping::Step(int steps) const noexcept {
    auto it = std::lower_bound(kLevels.begin(), kLevels.end(), zoom_ - 1e-12);
    auto index = static_cast<long>(it - kLevels.begin());
    index = std::clamp(index + steps, 0L, static_cast<long>(kLevels.size()) - 1);
    return kLevels[static_cast<std::size_t>(index)];
}

void CanvasMapping::Fit(int width, int height, int canvas_width, int canvas_height) noexcept {
    double chosen = kLevels.front();
    for (double level : kLevels) {
        if (width * level * aspect_ <= canvas_width && height * level <= canvas_height) {
            chosen = level;
        }
    }
    Centre(chosen, width, height, canvas_width, canvas_height);
}

void CanvasMapping::Centre(double zoom, int width, int height, int canvas_width,
                           int canvas_height) noexcept {
    zoom_ = zoom;
    anchored_ = false;
    originX_ = static_cast<int>(std::floor((canvas_width - width * zoom_ * aspect_) / 2));
    originY_ = static_cast<int>(std::floor((canvas_height - height * zoom_) / 2));
}

void CanvasMapping::KeepCentre(int old_width, int old_height, int width, int height) noexcept {
    // The centre pixel moves by whole screen pixels, and the composition with it.
    originX_ += width / 2 - old_width / 2;
    originY_ += height / 2 - old_height / 2;
    anchored_ = false;
}

void CanvasMapping::Actual(int width, int height, int canvas_width, int canvas_height) noexcept {
    zoom_ = 1.0;
    anchored_ = false;
    // Halved and cut towards zero, as a whole number's division would be.
    originX_ = static_cast<int>((canvas_width - width * aspect_) / 2);
    originY_ = (canvas_height - height) / 2;
}

} // namespace qzview
