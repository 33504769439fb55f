#include "Composition.h"

#include <algorithm>
#include <stdexcept>

#include <OpenImageIO/imagebuf.h>
#include <OpenImageIO/imagebufalgo.h>

namespace qzview {

namespace {

OIIO::ImageSpec RgbaSpec(int width, int height) {
    OIIO::ImageSpec format(width, height, 4, OIIO::TypeDesc::FLOAT);
    format.alpha_channel = 3;
    return format;
}

/// `layer` in a composition-sized buffer, at the top-left corner, transparent black
/// where it does not reach; colour multiplied by alpha, as `over` takes it.
OIIO::ImageBuf Premultiplied(LayerImage& layer, int width, int height) {
    OIIO::ImageSpec header = RgbaSpec(layer.width, layer.height);
    OIIO::ImageBuf source(header, layer.rgba.data());
    OIIO::ImageBuf placed(RgbaSpec(width, height));
    OIIO::ImageBufAlgo::zero(placed);
    OIIO::ImageBufAlgo::paste(
        placed, 0, 0, 0, 0, source,
        OIIO::ROI(0, std::min(layer.width, width), 0, std::min(layer.height, height), 0, 1, 0, 4));
    return OIIO::ImageBufAlgo::premult(placed);
}

} // namespace

void Composition::AddLayer(LayerImage image) {
    if (layers_.empty()) {
        width_ = image.width;
        height_ = image.height;
    }
    layers_.push_back(std::move(image));
    Composite();
}

void Composition::Composite() {
    if (layers_.size() == 1) {
        // One layer over transparent black is the layer itself: its values exactly,
        // where it covers the composition (which has its size).
        pixels_ = layers_.front().rgba;
        return;
    }
    // Straight colour is multiplied by alpha, composited with `over` newest on top, and
    // divided back.
    OIIO::ImageBuf result = Premultiplied(layers_.front(), width_, height_);
    for (std::size_t i = 1; i < layers_.size(); ++i) {
        OIIO::ImageBuf top = Premultiplied(layers_[i], width_, height_);
        OIIO::ImageBuf below = std::move(result);
        result = OIIO::ImageBufAlgo::over(top, below);
        if (result.has_error()) {
            throw std::runtime_error("composite: " + result.geterror());
        }
    }
    result = OIIO::ImageBufAlgo::unpremult(result);
    pixels_.assign(static_cast<std::size_t>(width_) * height_ * 4, 0.0f);
    result.get_pixels(OIIO::ROI(0, width_, 0, height_, 0, 1, 0, 4), OIIO::TypeDesc::FLOAT,
                      pixels_.data());
}

WorkingPixel Composition::PixelAt(int x, int y) const noexcept {
    if (x < 0 || y < 0 || x >= width_ || y >= height_) {
        return {0, 0, 0, 0};
    }
    const float* p = pixels_.data() + (static_cast<std::size_t>(y) * width_ + x) * 4;
    return {p[0], p[1], p[2], p[3]};
}

const LayerImage* Composition::LayerAt(int x, int y) const noexcept {
    if (x < 0 || y < 0 || x >= width_ || y >= height_) {
        return nullptr;
    }
    for (auto it = layers_.rbegin(); it != layers_.rend(); ++it) {
        if (x < it->width && y < it->height) {
            return &*it;
        }
    }
    return nullptr;
}

} // namespace qzview
