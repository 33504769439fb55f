#include "LayerImage.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <stdexcept>

#include <Imath/half.h>

#include "pixelview/PixelViewError.h"
#include "pixelview/PixelViewImage.h"

namespace qzview {

namespace {

/// Rows read at a time.
constexpr int kBand = 64;

template <typename T>
const T* Samples(const LayerImage& image, int x, int y) noexcept {
    return reinterpret_cast<const T*>(image.pixels.data()) +
           (static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width) +
            static_cast<std::size_t>(x)) *
               4;
}

/// Turns `count` samples of type T from column `x0` of row `y` into working values.
template <typename T, typename Value>
void Convert(const LayerImage& image, int y, int x0, std::size_t count, float* out,
             const Value& value) noexcept {
    const T* in = Samples<T>(image, x0, y);
    for (std::size_t i = 0; i < count; ++i) {
        out[i] = value(in[i]);
    }
}

} // namespace

std::size_t LayerImage::SampleBytes() const noexcept {
    switch (samples) {
    case SampleKind::Code8:
        return 1;
    case SampleKind::Code16:
    case SampleKind::Half:
        return 2;
    case SampleKind::Float:
        return 4;
    }
    return 4;
}

void LayerImage::WorkingRow(int y, int x0, int x1, float* out) const noexcept {
    const auto count = static_cast<std::size_t>(x1 - x0) * 4;
    // A code k is k / the largest code, correctly rounded, as the host reads an integer
    // pixel.
    const float scale = static_cast<float>(integerMax);
    const auto code = [scale](auto k) { return static_cast<float>(k) / scale; };
    switch (samples) {
    case SampleKind::Code8:
        Convert<std::uint8_t>(*this, y, x0, count, out, code);
        return;
    case SampleKind::Code16:
        Convert<std::uint16_t>(*this, y, x0, count, out, code);
        return;
    case SampleKind::Half:
        Convert<Imath::half>(*this, y, x0, count, out,
                             [](Imath::half h) { return static_cast<float>(h); });
        return;
    case SampleKind::Float:
        std::memcpy(out, Samples<float>(*this, x0, y), count * sizeof(float));
        return;
    }
}

std::array<float, 4> LayerImage::WorkingPixel(int x, int y) const noexcept {
    std::array<float, 4> pixel{};
    WorkingRow(y, x, x + 1, pixel.data());
    return pixel;
}

LayerImage FloatImage(std::string name, int width, int height, const std::vector<float>& rgba) {
    LayerImage image;
    image.path = name;
    image.name = std::move(name);
    image.format = "memory";
    image.channelType = "float";
    image.width = width;
    image.height = height;
    image.depth = 2;
    image.samples = SampleKind::Float;
    const std::size_t count =
        static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4;
    image.pixels.resize(count * sizeof(float));
    std::memcpy(image.pixels.data(), rgba.data(), std::min(count, rgba.size()) * sizeof(float));
    return image;
}

LayerImage ReadLayerImage(const std::string& path, const ReadProgress& progress) {
    try {
        qzhost::pixelview::PixelViewImage image(path);
        LayerImage layer;
        layer.path = path;
        layer.name = std::filesystem::path(path).filename().string();
        layer.format = image.FormatName();
        layer.channelType = image.ChannelType();
        layer.width = image.Width();
        layer.height = image.Height();
        layer.pixelAspect = image.PixelAspect();
        layer.depth = image.ProjectDepth();
        layer.samples = image.Samples();
        layer.integerMax = image.IntegerMax();
        const std::size_t row = static_cast<std::size_t>(layer.width) * 4 * layer.SampleBytes();
        layer.pixels.resize(row * static_cast<std::size_t>(layer.height));
        image.ReadAllPixels(progress);
        for (int y = 0; y < layer.height; y += kBand) {
            const int rows = std::min(kBand, layer.height - y);
            image.ReadRowsSamplesRGBA(image.Y0() + y, rows,
                                      layer.pixels.data() + static_cast<std::size_t>(y) * row);
        }
        return layer;
    } catch (const qzhost::pixelview::PixelViewError& error) {
        throw std::runtime_error(error.what());
    }
}

} // namespace qzview
