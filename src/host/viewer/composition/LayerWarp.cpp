#include "LayerWarp.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include <Imath/ImathMatrix.h>

namespace qzview {

namespace {

/// Four channels computed side by side, each lane in the same single-precision steps as
/// one channel alone.
using Lanes = float __attribute__((vector_size(16)));

/// Footprints of up to this many pixels a side take the quick path.
constexpr int kFastTaps = 4;

/// A projective pixel whose footprint holds more taps than this (near the vanishing line
/// of a layer's plane, where the footprint grows without bound) is filtered from the taps
/// within the layer, over the total weight of all its taps found in closed form.
constexpr double kMostTaps = 1 << 20;

/// The triangle filter of width 2 along one axis, as the image library evaluates it.
inline float Tri(float x) noexcept {
    x = std::fabs(x);
    return x < 1.0f ? 1.0f - x : 0.0f;
}

int FloorToInt(double v) noexcept {
    return static_cast<int>(std::clamp(std::floor(v), -1e9, 1e9));
}

int CeilToInt(double v) noexcept {
    return static_cast<int>(std::clamp(std::ceil(v), -1e9, 1e9));
}

/// Where a composition pixel's centre lies in the layer, and how widely the filter reads
/// there.
struct Spot {
    /// Whether the pixel sees the layer in front of the camera.
    bool seen = false;
    float s = 0;
    float t = 0;
    FilterReach reach;
};

/// The filter's reach where the layer point moves by `dsdx`, `dtdx` for one composition
/// pixel along x and by `dsdy`, `dtdy` along y: on each layer axis it widens by the larger
/// of that axis's two derivatives (at least 1).
inline FilterReach ReachOf(float dsdx, float dsdy, float dtdx, float dtdy) noexcept {
    const float ds = std::max(1.0f, std::max(std::fabs(dsdx), std::fabs(dsdy)));
    const float dt = std::max(1.0f, std::max(std::fabs(dtdx), std::fabs(dtdy)));
    // Half the filter's width of 2, widened.
    return {1.0f / ds, 1.0f / dt, 0.5f * ds * 2.0f, 0.5f * dt * 2.0f};
}

/// The spot of composition pixel `x`, `y` through the projective inverse `m` (row
/// vectors), in the image library's steps: the centre's homogeneous point with its
/// derivatives along x and y (1, 0 and 0, 1), divided by w by the quotient rule; the
/// filter widens on each layer axis by the larger of that axis's two derivatives.
inline Spot Locate(const std::array<std::array<float, 3>, 3>& m, int x, int y) noexcept {
    Spot spot;
    const float xc = static_cast<float>(x) + 0.5f;
    const float yc = static_cast<float>(y) + 0.5f;
    const float a = xc * m[0][0] + yc * m[1][0] + m[2][0];
    const float b = xc * m[0][1] + yc * m[1][1] + m[2][1];
    const float w = xc * m[0][2] + yc * m[1][2] + m[2][2];
    if (!(w > 0.0f)) {
        return spot;
    }
    const float winv = 1.0f / w;
    spot.s = a * winv;
    spot.t = b * winv;
    const float dsdx = winv * (m[0][0] - spot.s * m[0][2]);
    const float dsdy = winv * (m[1][0] - spot.s * m[1][2]);
    const float dtdx = winv * (m[0][1] - spot.t * m[0][2]);
    const float dtdy = winv * (m[1][1] - spot.t * m[1][2]);
    spot.reach = ReachOf(dsdx, dsdy, dtdx, dtdy);
    spot.seen = true;
    return spot;
}

/// The triangle-filtered value at layer point `s`, `t` from `patch` (black beyond it), in
/// the image library's order: taps row by row, each adding its weight to the total and its
/// weighted value to the sum, the sum divided by the total at the end.
inline void Filter(float s, float t, const FilterReach& reach, const LayerPatch& patch,
                   float* out) noexcept {
    const float dsInv = reach.dsInv;
    const float dtInv = reach.dtInv;
    const float radiusS = reach.radiusS;
    const float radiusT = reach.radiusT;
    const int smin = static_cast<int>(std::floor(s - radiusS));
    const int smax = static_cast<int>(std::ceil(s + radiusS));
    const int tmin = static_cast<int>(std::floor(t - radiusT));
    const int tmax = static_cast<int>(std::ceil(t + radiusT));
    float sum[4] = {0.0f, 0.0f, 0.0f, 0.0f};
    float total = 0.0f;
    const PixelRect& rect = patch.rect;
    if (smax - smin <= kFastTaps && tmax - tmin <= kFastTaps && smin >= rect.x0 &&
        smax <= rect.x1 && tmin >= rect.y0 && tmax <= rect.y1) {
        // The usual case: a few taps, all inside the patch. The weights along each axis
        // are found once; the sums run in the same order as below.
        float wx[kFastTaps];
        for (int sx = smin; sx < smax; ++sx) {
            wx[sx - smin] = Tri(dsInv * (static_cast<float>(sx) + 0.5f - s));
        }
        Lanes acc = {0.0f, 0.0f, 0.0f, 0.0f};
        for (int ty = tmin; ty < tmax; ++ty) {
            const float wy = Tri(dtInv * (static_cast<float>(ty) + 0.5f - t));
            const float* v = patch.At(smin, ty);
            for (int i = 0; i < smax - smin; ++i, v += 4) {
                const float weight = wx[i] * wy;
                total += weight;
                Lanes value;
                std::memcpy(&value, v, sizeof value);
                acc += weight * value;
            }
        }
        std::memcpy(sum, &acc, sizeof sum);
    } else {
        for (int ty = tmin; ty < tmax; ++ty) {
            const float wy = Tri(dtInv * (static_cast<float>(ty) + 0.5f - t));
            const bool row = ty >= rect.y0 && ty < rect.y1;
            for (int sx = smin; sx < smax; ++sx) {
                const float weight = Tri(dsInv * (static_cast<float>(sx) + 0.5f - s)) * wy;
                total += weight;
                if (row && sx >= rect.x0 && sx < rect.x1) {
                    const float* v = patch.At(sx, ty);
                    sum[0] += weight * v[0];
                    sum[1] += weight * v[1];
                    sum[2] += weight * v[2];
                    sum[3] += weight * v[3];
                } else {
                    // Beyond the layer: black, which still adds its weight times zero.
                    sum[0] += weight * 0.0f;
                    sum[1] += weight * 0.0f;
                    sum[2] += weight * 0.0f;
                    sum[3] += weight * 0.0f;
                }
            }
        }
    }
    if (total > 0.0f) {
        for (int c = 0; c < 4; ++c) {
            out[c] = sum[c] / total;
        }
    } else {
        out[0] = out[1] = out[2] = out[3] = 0.0f;
    }
}

/// The sum of the triangle filter's weights over taps `lo` to `hi` - 1 along one axis:
/// counted for a few thousand taps, else its integral, 2 x radius / 2 (the two differ by
/// far less than single precision for so wide a filter).
double WeightAlong(int lo, int hi, float centre, float inverse, float radius) noexcept {
    if (static_cast<double>(hi) - lo > 4096) {
        return radius;
    }
    double total = 0;
    for (int i = lo; i < hi; ++i) {
        total += Tri(inverse * (static_cast<float>(i) + 0.5f - centre));
    }
    return total;
}

/// For a footprint of more than kMostTaps taps: the same weights, but only the taps within
/// the patch are visited, and the total weight of all of them (the taps beyond the layer
/// add weight but no value) is the product of the weights along each axis. The result is
/// the library's but for rounding, at the cost of the layer pixels reached rather than of
/// every tap.
void FilterWide(const Spot& spot, const LayerPatch& patch, float* out) noexcept {
    const PixelRect& rect = patch.rect;
    const FilterReach& reach = spot.reach;
    const int s0 = FloorToInt(spot.s - reach.radiusS);
    const int s1 = CeilToInt(spot.s + reach.radiusS);
    const int t0 = FloorToInt(spot.t - reach.radiusT);
    const int t1 = CeilToInt(spot.t + reach.radiusT);
    double sum[4] = {0, 0, 0, 0};
    for (int ty = std::max(t0, rect.y0); ty < std::min(t1, rect.y1); ++ty) {
        const double wy = Tri(reach.dtInv * (static_cast<float>(ty) + 0.5f - spot.t));
        for (int sx = std::max(s0, rect.x0); sx < std::min(s1, rect.x1); ++sx) {
            const double weight = Tri(reach.dsInv * (static_cast<float>(sx) + 0.5f - spot.s)) * wy;
            const float* v = patch.At(sx, ty);
            for (int c = 0; c < 4; ++c) {
                sum[c] += weight * v[c];
            }
        }
    }
    const double total = WeightAlong(s0, s1, spot.s, reach.dsInv, reach.radiusS) *
                         WeightAlong(t0, t1, spot.t, reach.dtInv, reach.radiusT);
    for (int c = 0; c < 4; ++c) {
        out[c] = total > 0 ? static_cast<float>(sum[c] / total) : 0.0f;
    }
}

} // namespace

PixelRect PixelRect::Intersect(const PixelRect& other) const noexcept {
    return {std::max(x0, other.x0), std::max(y0, other.y0), std::min(x1, other.x1),
            std::min(y1, other.y1)};
}

LayerWarp::LayerWarp(const Affine& transform) noexcept : LayerWarp(Projective(transform)) {}

LayerWarp::LayerWarp(const Projective& transform) noexcept {
    visible_ = transform.Inverse().has_value();
    projective_ = !transform.IsAffine();
    if (!projective_ && transform.ToAffine().IsIntegerTranslation()) {
        shift_ = true;
        dx_ = static_cast<int>(transform.m[0][2]);
        dy_ = static_cast<int>(transform.m[1][2]);
    }
    // In single precision as the image library takes it (row vectors: [x w, y w, w] =
    // [u v 1] M, the transpose of our matrix).
    const Matrix3& m = transform.m;
    const Imath::M33f forward(
        static_cast<float>(m[0][0]), static_cast<float>(m[1][0]), static_cast<float>(m[2][0]),
        static_cast<float>(m[0][1]), static_cast<float>(m[1][1]), static_cast<float>(m[2][1]),
        static_cast<float>(m[0][2]), static_cast<float>(m[1][2]), static_cast<float>(m[2][2]));
    const Imath::M33f inverse = forward.inverse();
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            inverse_[i][j] = inverse[i][j];
        }
    }
    // For an affine transform the derivatives of the layer position along the
    // composition's axes are the inverse's linear part, the same at every pixel.
    reach_ = ReachOf(inverse_[0][0], inverse_[1][0], inverse_[0][1], inverse_[1][1]);
}

bool LayerWarp::WholePixelShift(int& dx, int& dy) const noexcept {
    dx = dx_;
    dy = dy_;
    return shift_;
}

PixelRect LayerWarp::Footprint(const PixelRect& region) const noexcept {
    if (region.Empty()) {
        return {};
    }
    if (projective_) {
        // Each pixel has a footprint of its own: found as SampleRow finds it.
        double s0 = 1e300;
        double t0 = 1e300;
        double s1 = -1e300;
        double t1 = -1e300;
        for (int y = region.y0; y < region.y1; ++y) {
            for (int x = region.x0; x < region.x1; ++x) {
                const Spot spot = Locate(inverse_, x, y);
                const float lo = spot.s - spot.reach.radiusS;
                const float hi = spot.s + spot.reach.radiusS;
                const float top = spot.t - spot.reach.radiusT;
                const float bottom = spot.t + spot.reach.radiusT;
                if (!spot.seen || !std::isfinite(lo) || !std::isfinite(hi) || !std::isfinite(top) ||
                    !std::isfinite(bottom)) {
                    continue;
                }
                s0 = std::min(s0, static_cast<double>(std::floor(lo)));
                s1 = std::max(s1, static_cast<double>(std::ceil(hi)));
                t0 = std::min(t0, static_cast<double>(std::floor(top)));
                t1 = std::max(t1, static_cast<double>(std::ceil(bottom)));
            }
        }
        if (s0 > s1) {
            return {};
        }
        return {FloorToInt(s0) - 1, FloorToInt(t0) - 1, CeilToInt(s1) + 1, CeilToInt(t1) + 1};
    }
    double s0 = 1e300;
    double t0 = 1e300;
    double s1 = -1e300;
    double t1 = -1e300;
    for (const double x : {region.x0 + 0.5, region.x1 - 0.5}) {
        for (const double y : {region.y0 + 0.5, region.y1 - 0.5}) {
            const double s = x * inverse_[0][0] + y * inverse_[1][0] + inverse_[2][0];
            const double t = x * inverse_[0][1] + y * inverse_[1][1] + inverse_[2][1];
            s0 = std::min(s0, s);
            s1 = std::max(s1, s);
            t0 = std::min(t0, t);
            t1 = std::max(t1, t);
        }
    }
    // One pixel more on every side than the filter reaches: the single-precision
    // positions of SampleRow may differ from these in their last bits.
    return {FloorToInt(s0 - reach_.radiusS) - 1, FloorToInt(t0 - reach_.radiusT) - 1,
            CeilToInt(s1 + reach_.radiusS) + 1, CeilToInt(t1 + reach_.radiusT) + 1};
}

// Flattened: the per-pixel sample is inlined into the row's loop.
__attribute__((flatten)) void LayerWarp::SampleRow(int y, int x0, int x1, const LayerPatch& patch,
                                                   float* out) const noexcept {
    if (!projective_) {
        for (int x = x0; x < x1; ++x, out += 4) {
            SampleAffine(x, y, patch, out);
        }
        return;
    }
    for (int x = x0; x < x1; ++x, out += 4) {
        SampleProjective(x, y, patch, out);
    }
}

void LayerWarp::SampleAffine(int x, int y, const LayerPatch& patch, float* out) const noexcept {
    // The composition pixel's centre in the layer: [s t w] = [x y 1] M^-1 (w is 1).
    const float xc = static_cast<float>(x) + 0.5f;
    const float yc = static_cast<float>(y) + 0.5f;
    const float a = xc * inverse_[0][0] + yc * inverse_[1][0] + inverse_[2][0];
    const float b = xc * inverse_[0][1] + yc * inverse_[1][1] + inverse_[2][1];
    const float w = xc * inverse_[0][2] + yc * inverse_[1][2] + inverse_[2][2];
    if (w == 0.0f) {
        out[0] = out[1] = out[2] = out[3] = 0.0f;
        return;
    }
    const float winv = 1.0f / w;
    Filter(a * winv, b * winv, reach_, patch, out);
}

void LayerWarp::SampleProjective(int x, int y, const LayerPatch& patch, float* out) const noexcept {
    const Spot spot = Locate(inverse_, x, y);
    const PixelRect& rect = patch.rect;
    // Taps outside the patch are beyond the layer: a footprint that meets none of the
    // patch (or that no number can hold) gives transparent black, as all its taps would.
    const float s0 = std::floor(spot.s - spot.reach.radiusS);
    const float s1 = std::ceil(spot.s + spot.reach.radiusS);
    const float t0 = std::floor(spot.t - spot.reach.radiusT);
    const float t1 = std::ceil(spot.t + spot.reach.radiusT);
    if (!spot.seen || !(s1 > static_cast<float>(rect.x0) && s0 < static_cast<float>(rect.x1) &&
                        t1 > static_cast<float>(rect.y0) && t0 < static_cast<float>(rect.y1))) {
        out[0] = out[1] = out[2] = out[3] = 0.0f;
        return;
    }
    if (static_cast<double>(s1 - s0) * static_cast<double>(t1 - t0) > kMostTaps) {
        FilterWide(spot, patch, out);
        return;
    }
    Filter(spot.s, spot.t, spot.reach, patch, out);
}

} // namespace qzview
