#include "ExactView.h"

#include <algorithm>
#include <cmath>
#include <thread>
#include <vector>

#include "canvas/Checkerboard.h"

namespace qzview {

namespace {

/// Composition rows per band where composition pixels are magnified; screen rows per band
/// where they are not.
constexpr int kBandRows = 32;
constexpr int kBandScreenRows = 8;

/// Runs `band(i)` for i in [0, count) on `threads` threads until `cancel` is set.
template <typename Band>
void ShareOut(int count, int threads, const std::atomic<bool>& cancel, const Band& band) {
    std::atomic<int> next{0};
    const auto work = [&] {
        for (int i = next++; i < count && !cancel.load(std::memory_order_relaxed); i = next++) {
            band(i);
        }
    };
    std::vector<std::thread> helpers;
    for (int t = 1; t < std::min(threads, count); ++t) {
        helpers.emplace_back(work);
    }
    work();
    for (std::thread& helper : helpers) {
        helper.join();
    }
}

/// Where a composition pixel covers a screen pixel or more across and down: each screen
/// pixel the display colour of its composition pixel.
void Magnified(const CanvasScene& scene, const CanvasMapping& mapping, QImage& view,
               const std::atomic<bool>& cancel, int threads) {
    const int w = view.width();
    const int h = view.height();
    std::vector<int> columns(static_cast<std::size_t>(w));
    std::vector<int> rows(static_cast<std::size_t>(h));
    int unused = 0;
    for (int x = 0; x < w; ++x) {
        mapping.PixelAt(x, 0, columns[static_cast<std::size_t>(x)], unused);
    }
    for (int y = 0; y < h; ++y) {
        mapping.PixelAt(0, y, unused, rows[static_cast<std::size_t>(y)]);
    }
    const int cx0 = std::max(0, columns.front());
    const int cx1 = std::min(scene.width, columns.back() + 1);
    const int cy0 = std::max(0, rows.front());
    const int cy1 = std::min(scene.height, rows.back() + 1);
    // Screen rows beyond the composition's rows.
    for (int y = 0; y < h; ++y) {
        const int py = rows[static_cast<std::size_t>(y)];
        if (py < 0 || py >= scene.height || cx1 <= cx0) {
            std::fill_n(reinterpret_cast<std::uint32_t*>(view.scanLine(y)), w, kOutside);
        }
    }
    if (cx1 <= cx0 || cy1 <= cy0) {
        return;
    }
    const int bands = (cy1 - cy0 + kBandRows - 1) / kBandRows;
    const auto cw = static_cast<std::size_t>(cx1 - cx0);
    ShareOut(bands, threads, cancel, [&](int band) {
        thread_local CompositeScratch scratch;
        const int by0 = cy0 + band * kBandRows;
        const int by1 = std::min(cy1, by0 + kBandRows);
        std::vector<float> values(cw * static_cast<std::size_t>(by1 - by0) * 4);
        CompositeRegion(*scene.snapshot, PixelRect{cx0, by0, cx1, by1}, AlphaForm::Straight,
                        values.data(), scratch);
        std::vector<std::uint32_t> colours(cw * static_cast<std::size_t>(by1 - by0));
        ToDisplay(values.data(), colours.size(), scene.display, scene.monitor.get(),
                  colours.data());
        for (int y = 0; y < h; ++y) {
            const int py = rows[static_cast<std::size_t>(y)];
            if (py < by0 || py >= by1) {
                continue;
            }
            auto* line = reinterpret_cast<std::uint32_t*>(view.scanLine(y));
            const std::uint32_t* source = colours.data() + static_cast<std::size_t>(py - by0) * cw;
            for (int x = 0; x < w; ++x) {
                const int px = columns[static_cast<std::size_t>(x)];
                line[x] = px < 0 || px >= scene.width
                              ? kOutside
                              : OverBackground(source[px - cx0], Checker(x, y));
            }
        }
    });
}

/// Where a composition pixel is narrower or shorter than a screen pixel: each screen pixel
/// the box filter of the composition pixels it covers (ColumnsAt by RowsAt, those inside
/// the composition). A screen pixel shows the composition when the pixel that the pointer
/// reads there lies inside it.
void Reduced(const CanvasScene& scene, const CanvasMapping& mapping, QImage& view,
             const std::atomic<bool>& cancel, int threads) {
    const int w = view.width();
    const int h = view.height();
    std::vector<std::pair<int, int>> columns(static_cast<std::size_t>(w));
    std::vector<std::pair<int, int>> rows(static_cast<std::size_t>(h));
    int sx0 = w;
    int sx1 = 0;
    int sy0 = h;
    int sy1 = 0;
    for (int x = 0; x < w; ++x) {
        columns[static_cast<std::size_t>(x)] = mapping.ColumnsAt(x);
        int px = 0;
        int unused = 0;
        mapping.PixelAt(x, 0, px, unused);
        if (px >= 0 && px < scene.width) {
            sx0 = std::min(sx0, x);
            sx1 = x + 1;
        }
    }
    for (int y = 0; y < h; ++y) {
        rows[static_cast<std::size_t>(y)] = mapping.RowsAt(y);
        int py = 0;
        int unused = 0;
        mapping.PixelAt(0, y, unused, py);
        if (py >= 0 && py < scene.height) {
            sy0 = std::min(sy0, y);
            sy1 = y + 1;
        }
    }
    for (int y = 0; y < h; ++y) {
        auto* line = reinterpret_cast<std::uint32_t*>(view.scanLine(y));
        if (y < sy0 || y >= sy1) {
            std::fill_n(line, w, kOutside);
            continue;
        }
        std::fill_n(line, std::max(0, std::min(sx0, w)), kOutside);
        std::fill(line + std::min(sx1, w), line + w, kOutside);
    }
    if (sx1 <= sx0 || sy1 <= sy0) {
        return;
    }
    const int cx0 = std::max(0, columns[static_cast<std::size_t>(sx0)].first);
    const int cx1 = std::min(scene.width, columns[static_cast<std::size_t>(sx1 - 1)].second);
    const auto cw = static_cast<std::size_t>(cx1 - cx0);
    const int bands = (sy1 - sy0 + kBandScreenRows - 1) / kBandScreenRows;
    ShareOut(bands, threads, cancel, [&](int band) {
        thread_local CompositeScratch scratch;
        const int first = sy0 + band * kBandScreenRows;
        const int last = std::min(sy1, first + kBandScreenRows);
        const int by0 = std::max(0, rows[static_cast<std::size_t>(first)].first);
        const int by1 = std::min(scene.height, rows[static_cast<std::size_t>(last - 1)].second);
        std::vector<float> values(cw * static_cast<std::size_t>(std::max(0, by1 - by0)) * 4);
        CompositeRegion(*scene.snapshot, PixelRect{cx0, by0, cx1, by1}, AlphaForm::Premultiplied,
                        values.data(), scratch);
        const auto count = static_cast<std::size_t>(sx1 - sx0);
        std::vector<float> means(count * 4);
        std::vector<std::uint32_t> colours(count);
        for (int y = first; y < last; ++y) {
            const int ry0 = std::max(by0, rows[static_cast<std::size_t>(y)].first);
            const int ry1 = std::min(by1, rows[static_cast<std::size_t>(y)].second);
            for (int x = sx0; x < sx1; ++x) {
                const int rx0 = std::max(cx0, columns[static_cast<std::size_t>(x)].first);
                const int rx1 = std::min(cx1, columns[static_cast<std::size_t>(x)].second);
                double sum[4] = {0, 0, 0, 0};
                for (int py = ry0; py < ry1; ++py) {
                    const float* p = values.data() + (static_cast<std::size_t>(py - by0) * cw +
                                                      static_cast<std::size_t>(rx0 - cx0)) *
                                                         4;
                    for (int px = rx0; px < rx1; ++px, p += 4) {
                        sum[0] += p[0];
                        sum[1] += p[1];
                        sum[2] += p[2];
                        sum[3] += p[3];
                    }
                }
                const double area = std::max(1, (ry1 - ry0) * (rx1 - rx0));
                float* mean = means.data() + static_cast<std::size_t>(x - sx0) * 4;
                const double alpha = sum[3] / area;
                for (int c = 0; c < 3; ++c) {
                    const double premultiplied = sum[c] / area;
                    mean[c] = static_cast<float>(alpha != 0.0 ? premultiplied / alpha : 0.0);
                }
                mean[3] = static_cast<float>(alpha);
            }
            ToDisplay(means.data(), count, scene.display, scene.monitor.get(), colours.data());
            auto* line = reinterpret_cast<std::uint32_t*>(view.scanLine(y));
            for (int x = sx0; x < sx1; ++x) {
                line[x] = OverBackground(colours[static_cast<std::size_t>(x - sx0)], Checker(x, y));
            }
        }
    });
}

} // namespace

bool RenderExactView(const CanvasScene& scene, const CanvasMapping& mapping, QImage& view,
                     const std::atomic<bool>& cancel, int threads) {
    if (!scene.snapshot || scene.width <= 0 || scene.height <= 0) {
        view.fill(kOutside);
        return !cancel.load();
    }
    if (mapping.ScaleX() >= 1.0 && mapping.ScaleY() >= 1.0) {
        Magnified(scene, mapping, view, cancel, threads);
    } else {
        Reduced(scene, mapping, view, cancel, threads);
    }
    return !cancel.load();
}

} // namespace qzview
