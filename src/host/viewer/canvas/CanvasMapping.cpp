#include "CanvasMapping.h"

#include <algorithm>
#include <cmath>

namespace qzview {

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

CompositionPoint CanvasMapping::ToComposition(int sx, int sy) const noexcept {
    // Below zoom 1 the level is 1/n: multiplying by n is exact, where dividing by the
    // rounded 1/n would not be.
    if (zoom_ < 1.0) {
        const double n = std::round(1.0 / zoom_);
        return {(sx - originX_ + 0.5) * n, (sy - originY_ + 0.5) * n};
    }
    return {(sx - originX_ + 0.5) / zoom_, (sy - originY_ + 0.5) / zoom_};
}

void CanvasMapping::PixelAt(int sx, int sy, int& px, int& py) const noexcept {
    const CompositionPoint point = ToComposition(sx, sy);
    px = static_cast<int>(std::floor(point.x));
    py = static_cast<int>(std::floor(point.y));
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
    originX_ = static_cast<int>(std::lround(sx + 0.5 - fixed.x * zoom_));
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
        if (width * level <= canvas_width && height * level <= canvas_height) {
            chosen = level;
        }
    }
    Centre(chosen, width, height, canvas_width, canvas_height);
}

void CanvasMapping::Centre(double zoom, int width, int height, int canvas_width,
                           int canvas_height) noexcept {
    zoom_ = zoom;
    anchored_ = false;
    originX_ = static_cast<int>(std::floor((canvas_width - width * zoom_) / 2));
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
    originX_ = (canvas_width - width) / 2;
    originY_ = (canvas_height - height) / 2;
}

} // namespace qzview
