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

} // namespace

PixelRect PixelRect::Intersect(const PixelRect& other) const noexcept {
    return {std::max(x0, other.x0), std::max(y0, other.y0), std::min(x1, other.x1),
            std::min(y1, other.y1)};
}

LayerWarp::LayerWarp(const Affine& transform) noexcept {
    visible_ = transform.Inverse().has_value();
    if (transform.IsIntegerTranslation()) {
        shift_ = true;
        dx_ = static_cast<int>(transform.e);
        dy_ = static_cast<int>(transform.f);
    }
    // In single precision as the image library takes it (row vectors: [x' y' 1] =
    // [x y 1] M).
    const Imath::M33f forward(
        static_cast<float>(transform.a), static_cast<float>(transform.b), 0.0f,
        static_cast<float>(transform.c), static_cast<float>(transform.d), 0.0f,
        static_cast<float>(transform.e), static_cast<float>(transform.f), 1.0f);
    const Imath::M33f inverse = forward.inverse();
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            inverse_[i][j] = inverse[i][j];
        }
    }
    // The derivatives of the layer position along the composition's axes are the
    // inverse's linear part; the filter widens by the larger of them on each layer axis.
    const float ds = std::max(1.0f, std::max(std::fabs(inverse_[0][0]), std::fabs(inverse_[1][0])));
    const float dt = std::max(1.0f, std::max(std::fabs(inverse_[0][1]), std::fabs(inverse_[1][1])));
    dsInv_ = 1.0f / ds;
    dtInv_ = 1.0f / dt;
    // Half the filter's width of 2, widened.
    radiusS_ = 0.5f * ds * 2.0f;
    radiusT_ = 0.5f * dt * 2.0f;
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
    // positions of Sample may differ from these in their last bits.
    return {FloorToInt(s0 - radiusS_) - 1, FloorToInt(t0 - radiusT_) - 1,
            CeilToInt(s1 + radiusS_) + 1, CeilToInt(t1 + radiusT_) + 1};
}

// Flattened: the per-pixel sample is inlined into the row's loop.
__attribute__((flatten)) void LayerWarp::SampleRow(int y, int x0, int x1, const LayerPatch& patch,
                                                   float* out) const noexcept {
    for (int x = x0; x < x1; ++x, out += 4) {
        Sample(x, y, patch, out);
    }
}

void LayerWarp::Sample(int x, int y, const LayerPatch& patch, float* out) const noexcept {
    // The composition pixel's centre in the layer: [s t w] = [x y 1] M^-1.
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
    const float s = a * winv;
    const float t = b * winv;
    const int smin = static_cast<int>(std::floor(s - radiusS_));
    const int smax = static_cast<int>(std::ceil(s + radiusS_));
    const int tmin = static_cast<int>(std::floor(t - radiusT_));
    const int tmax = static_cast<int>(std::ceil(t + radiusT_));
    float sum[4] = {0.0f, 0.0f, 0.0f, 0.0f};
    float total = 0.0f;
    const PixelRect& rect = patch.rect;
    if (smax - smin <= kFastTaps && tmax - tmin <= kFastTaps && smin >= rect.x0 &&
        smax <= rect.x1 && tmin >= rect.y0 && tmax <= rect.y1) {
        // The usual case: a few taps, all inside the patch. The weights along each axis
        // are found once; the sums run in the same order as below.
        float wx[kFastTaps];
        for (int sx = smin; sx < smax; ++sx) {
            wx[sx - smin] = Tri(dsInv_ * (static_cast<float>(sx) + 0.5f - s));
        }
        Lanes acc = {0.0f, 0.0f, 0.0f, 0.0f};
        for (int ty = tmin; ty < tmax; ++ty) {
            const float wy = Tri(dtInv_ * (static_cast<float>(ty) + 0.5f - t));
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
            const float wy = Tri(dtInv_ * (static_cast<float>(ty) + 0.5f - t));
            const bool row = ty >= rect.y0 && ty < rect.y1;
            for (int sx = smin; sx < smax; ++sx) {
                const float weight = Tri(dsInv_ * (static_cast<float>(sx) + 0.5f - s)) * wy;
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

} // namespace qzview
