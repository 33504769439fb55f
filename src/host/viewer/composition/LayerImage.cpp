#include "LayerImage.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <filesystem>
#include <stdexcept>

#include "pixelview/PixelViewError.h"
#include "pixelview/PixelViewImage.h"

namespace qzview {

namespace {

/// Rows read at a time.
constexpr int kBand = 64;

/// The float of a half float's bits.
float HalfToFloat(std::uint16_t bits) noexcept {
    const std::uint32_t sign = static_cast<std::uint32_t>(bits & 0x8000u) << 16;
    const std::uint32_t exponent = (bits >> 10) & 0x1Fu;
    std::uint32_t mantissa = bits & 0x3FFu;
    if (exponent == 0x1F) {
        return std::bit_cast<float>(sign | 0x7F800000u | (mantissa << 13)); // inf, NaN
    }
    if (exponent != 0) {
        return std::bit_cast<float>(sign | ((exponent + 112) << 23) | (mantissa << 13));
    }
    if (mantissa == 0) {
        return std::bit_cast<float>(sign); // signed zero
    }
    // Subnormal: shift the mantissa up to an implicit one.
    int shift = 0;
    while ((mantissa & 0x400u) == 0) {
        mantissa <<= 1;
        ++shift;
    }
    const std::uint32_t e = static_cast<std::uint32_t>(113 - shift);
    return std::bit_cast<float>(sign | (e << 23) | ((mantissa & 0x3FFu) << 13));
}

/// Every half float's value, looked up by its bits.
const std::vector<float>& HalfValues() {
    static const std::vector<float> values = [] {
        std::vector<float> table(65536);
        for (std::uint32_t bits = 0; bits < 65536; ++bits) {
            table[bits] = HalfToFloat(static_cast<std::uint16_t>(bits));
        }
        return table;
    }();
    return values;
}

template <typename T>
const T* Samples(const LayerImage& image, int x, int y) noexcept {
    return reinterpret_cast<const T*>(image.pixels.data()) +
           (static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width) +
            static_cast<std::size_t>(x)) *
               4;
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
    switch (samples) {
    case SampleKind::Code8: {
        // A code k is k / 255, correctly rounded, as the host reads an 8-bit pixel.
        const float scale = static_cast<float>(integerMax);
        const auto* in = Samples<std::uint8_t>(*this, x0, y);
        for (std::size_t i = 0; i < count; ++i) {
            out[i] = static_cast<float>(in[i]) / scale;
        }
        return;
    }
    case SampleKind::Code16: {
        const float scale = static_cast<float>(integerMax);
        const auto* in = Samples<std::uint16_t>(*this, x0, y);
        for (std::size_t i = 0; i < count; ++i) {
            out[i] = static_cast<float>(in[i]) / scale;
        }
        return;
    }
    case SampleKind::Half: {
        const auto* in = Samples<std::uint16_t>(*this, x0, y);
        const float* values = HalfValues().data();
        for (std::size_t i = 0; i < count; ++i) {
            out[i] = values[in[i]];
        }
        return;
    }
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
