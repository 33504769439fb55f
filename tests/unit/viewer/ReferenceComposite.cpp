#include "ReferenceComposite.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include <OpenImageIO/imagebufalgo.h>

namespace qzviewtest {

qzview::LayerImage Plate(const char* name, int width, int height, unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> noise(-0.05f, 0.05f);
    std::vector<float> rgba;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            rgba.insert(rgba.end(),
                        {static_cast<float>(x) / static_cast<float>(width) + noise(random),
                         static_cast<float>(y) / static_cast<float>(height),
                         std::sin(static_cast<float>(x + y) * 0.2f) * 0.5f + 0.5f,
                         std::clamp(0.35f + 0.6f * static_cast<float>((x * 7 + y * 3) % 11) / 10.0f,
                                    0.0f, 1.0f)});
        }
    }
    return qzview::FloatImage(name, width, height, rgba);
}

OIIO::ImageSpec Rgba(int width, int height) {
    OIIO::ImageSpec layout(width, height, 4, OIIO::TypeDesc::FLOAT);
    layout.alpha_channel = 3;
    return layout;
}

/// One layer placed into a composition-sized buffer, colour multiplied by alpha, the mask
/// and the opacity: pasted when its transform moves it by whole pixels, warped otherwise.
OIIO::ImageBuf Placed(const qzview::Layer& layer, int width, int height,
                      double composition_aspect) {
    const qzview::LayerImage& image = *layer.image;
    OIIO::ImageBuf source(Rgba(image.width, image.height));
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            const auto p = image.WorkingPixel(x, y);
            source.setpixel(x, y, p.data());
        }
    }
    OIIO::ImageBuf prepared;
    EXPECT_TRUE(OIIO::ImageBufAlgo::premult(prepared, source));
    const float opacity = static_cast<float>(std::clamp(layer.values.opacity / 100.0, 0.0, 1.0));
    if (opacity != 1.0f || layer.values.mask) {
        for (int y = 0; y < image.height; ++y) {
            for (int x = 0; x < image.width; ++x) {
                float p[4];
                prepared.getpixel(x, y, p);
                const float k =
                    opacity *
                    (layer.values.mask ? qzview::MaskCoverage(*layer.values.mask, x, y) : 1.0f);
                for (float& c : p) {
                    c *= k;
                }
                prepared.setpixel(x, y, p);
            }
        }
    }
    OIIO::ImageBuf placed(Rgba(width, height));
    OIIO::ImageBufAlgo::zero(placed);
    const qzview::Affine m = qzview::LayerToComposition(layer, composition_aspect);
    if (m.IsIntegerTranslation()) {
        EXPECT_TRUE(OIIO::ImageBufAlgo::paste(placed, static_cast<int>(m.e), static_cast<int>(m.f),
                                              0, 0, prepared));
        return placed;
    }
    const float matrix[3][3] = {
        {static_cast<float>(m.a), static_cast<float>(m.b), 0.0f},
        {static_cast<float>(m.c), static_cast<float>(m.d), 0.0f},
        {static_cast<float>(m.e), static_cast<float>(m.f), 1.0f},
    };
    EXPECT_TRUE(OIIO::ImageBufAlgo::warp(placed, prepared, matrix, "triangle", 0.0f, false,
                                         OIIO::ImageBuf::WrapBlack));
    return placed;
}

/// The full composite, straight, made with the image library alone.
OIIO::ImageBuf Reference(const qzview::Composition& composition, bool straight) {
    const int w = composition.Width();
    const int h = composition.Height();
    OIIO::ImageBuf result(Rgba(w, h));
    OIIO::ImageBufAlgo::zero(result);
    bool first = true;
    for (const qzview::Layer& layer : composition.Layers()) {
        if (!layer.Drawn()) {
            continue;
        }
        OIIO::ImageBuf placed = Placed(layer, w, h, composition.PixelAspect());
        if (first) {
            result = placed;
            first = false;
            continue;
        }
        OIIO::ImageBuf merged;
        EXPECT_TRUE(OIIO::ImageBufAlgo::over(merged, placed, result));
        result = merged;
    }
    if (!straight) {
        return result;
    }
    OIIO::ImageBuf divided;
    EXPECT_TRUE(OIIO::ImageBufAlgo::unpremult(divided, result));
    return divided;
}

} // namespace qzviewtest
