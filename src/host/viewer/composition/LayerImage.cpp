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
    return reinterpret_cast<const T*>(image.pixels->data()) +
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

std::byte* LayerImage::NewPixels(std::size_t bytes) {
    auto fresh = std::make_shared<std::vector<std::byte>>(bytes);
    std::byte* data = fresh->data();
    pixels = std::move(fresh);
    return data;
}

std::size_t LayerImage::SampleBytes() const noexcept {
    return qzhost::pixelview::SampleBytes(samples);
}

std::vector<std::string> LayerImage::SetNames() const {
    if (!channels) {
        return {setName};
    }
    std::vector<std::string> names;
    for (const ChannelSet& each : channels->sets) {
        names.push_back(each.name);
    }
    return names;
}

namespace {

/// The file's values of columns `x0` to `x1 - 1` of row `y` of `image`, before any colour
/// space is applied.
void FileRow(const LayerImage& image, int y, int x0, int x1, float* out) noexcept {
    const auto count = static_cast<std::size_t>(x1 - x0) * 4;
    // A code k is k / the largest code, correctly rounded, as the host reads an integer
    // pixel.
    const float scale = static_cast<float>(image.integerMax);
    const auto code = [scale](auto k) { return static_cast<float>(k) / scale; };
    switch (image.samples) {
    case SampleKind::Code8:
        Convert<std::uint8_t>(image, y, x0, count, out, code);
        return;
    case SampleKind::Code16:
        Convert<std::uint16_t>(image, y, x0, count, out, code);
        return;
    case SampleKind::Half:
        Convert<Imath::half>(image, y, x0, count, out,
                             [](Imath::half h) { return static_cast<float>(h); });
        return;
    case SampleKind::Float:
        std::memcpy(out, Samples<float>(image, x0, y), count * sizeof(float));
        return;
    }
}

} // namespace

void LayerImage::WorkingRow(int y, int x0, int x1, float* out) const noexcept {
    FileRow(*this, y, x0, x1, out);
    if (toWorking) {
        toWorking->Apply(out, static_cast<std::size_t>(x1 - x0));
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
    image.frameWidth = width;
    image.frameHeight = height;
    image.setName = "RGBA";
    image.depth = 2;
    image.samples = SampleKind::Float;
    const std::size_t count =
        static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4;
    std::memcpy(image.NewPixels(count * sizeof(float)), rgba.data(),
                std::min(count, rgba.size()) * sizeof(float));
    return image;
}

namespace {

/// `image` showing its channel set `set`, picked out of its channels.
LayerImage PickSet(const LayerImage& image, int set) {
    if (!image.channels || set < 0 || set >= static_cast<int>(image.channels->sets.size())) {
        throw std::out_of_range("the image has no channel set " + std::to_string(set));
    }
    const ChannelSet& chosen = image.channels->sets[static_cast<std::size_t>(set)];
    const ImageChannels::Part& part =
        image.channels->parts.at(static_cast<std::size_t>(chosen.part));
    LayerImage shown;
    shown.path = image.path;
    shown.name = image.name;
    shown.format = image.format;
    shown.channelType = part.channelType;
    shown.width = part.width;
    shown.height = part.height;
    shown.dataX = part.dataX;
    shown.dataY = part.dataY;
    shown.frameWidth = image.frameWidth;
    shown.frameHeight = image.frameHeight;
    shown.setName = chosen.name;
    shown.set = set;
    shown.channels = image.channels;
    shown.pixelAspect = image.pixelAspect;
    shown.colourSpace = image.colourSpace;
    shown.toWorking = image.toWorking;
    shown.depth = part.depth;
    shown.samples = part.samples;
    shown.integerMax = part.integerMax;
    const std::size_t pixels =
        static_cast<std::size_t>(part.width) * static_cast<std::size_t>(part.height);
    std::byte* out = shown.NewPixels(pixels * 4 * shown.SampleBytes());
    qzhost::pixelview::PickSamplesRGBA(chosen, part.channels, part.samples, part.integerMax,
                                       part.pixels.data(), pixels, out);
    return shown;
}

/// Where a pixel rectangle starting at `at` lies from a frame starting at `frame`; throws
/// std::runtime_error when that is beyond the integers a layer's pixels are placed by.
int Offset(const std::string& path, int at, int frame) {
    const long long offset = static_cast<long long>(at) - frame;
    if (offset < -(1LL << 30) || offset > (1LL << 30)) {
        throw std::runtime_error("cannot place '" + path +
                                 "': its pixels lie too far from its frame");
    }
    return static_cast<int>(offset);
}

/// Reads every part of `image` with all its channels, `progress` going from 0 to 1 over
/// them.
std::shared_ptr<ImageChannels> ReadAllChannels(qzhost::pixelview::PixelViewImage& image,
                                               const ReadProgress& progress) {
    auto channels = std::make_shared<ImageChannels>();
    channels->sets = image.Sets();
    const int first_x = image.PartHeader(0).displayX;
    const int first_y = image.PartHeader(0).displayY;
    const auto parts = static_cast<int>(image.PartHeader(0).parts);
    for (int p = 0; p < parts; ++p) {
        const qzhost::pixelview::ImageFileHeader& header = image.PartHeader(p);
        ImageChannels::Part part;
        part.dataX = Offset(image.Path(), header.x0, first_x);
        part.dataY = Offset(image.Path(), header.y0, first_y);
        part.width = header.width;
        part.height = header.height;
        part.channels = header.channels;
        part.samples = header.samples;
        part.integerMax = header.integerMax;
        part.depth = header.depth;
        part.channelType = header.channelType;
        const std::size_t row = static_cast<std::size_t>(part.width) *
                                static_cast<std::size_t>(part.channels) *
                                qzhost::pixelview::SampleBytes(part.samples);
        part.pixels.resize(row * static_cast<std::size_t>(part.height));
        image.ReadAllPartPixels(p, [&](double done) {
            if (progress) {
                progress((p + done) / parts);
            }
        });
        for (int y = 0; y < part.height; y += kBand) {
            const int rows = std::min(kBand, part.height - y);
            image.ReadPartRows(p, header.y0 + y, rows,
                               part.pixels.data() + static_cast<std::size_t>(y) * row);
        }
        channels->parts.push_back(std::move(part));
    }
    return channels;
}

} // namespace

LayerImage WithChannelSet(const LayerImage& image, int set) {
    return set == image.set ? image : PickSet(image, set);
}

LayerImage WithColourSpace(const LayerImage& image, std::string space,
                           std::shared_ptr<const qzhost::ColourTransform> to_working) {
    LayerImage shown = image;
    shown.colourSpace = std::move(space);
    shown.toWorking = to_working && !to_working->Identity() ? std::move(to_working) : nullptr;
    return shown;
}

LayerImage ReadLayerImage(const std::string& path, const ReadProgress& progress) {
    try {
        qzhost::pixelview::PixelViewImage image(path);
        LayerImage layer;
        layer.path = path;
        layer.name = std::filesystem::path(path).filename().string();
        layer.format = image.FormatName();
        layer.frameWidth = image.DisplayWidth();
        layer.frameHeight = image.DisplayHeight();
        layer.pixelAspect = image.PixelAspect();
        if (image.Sets().size() > 1) {
            // Every channel is kept; the first set is picked out of them.
            layer.channels = ReadAllChannels(image, progress);
            return PickSet(layer, 0);
        }
        layer.channelType = image.ChannelType();
        layer.width = image.Width();
        layer.height = image.Height();
        layer.dataX = Offset(path, image.X0(), image.DisplayX());
        layer.dataY = Offset(path, image.Y0(), image.DisplayY());
        layer.setName = image.Set().name;
        layer.depth = image.ProjectDepth();
        layer.samples = image.Samples();
        layer.integerMax = image.IntegerMax();
        const std::size_t row = static_cast<std::size_t>(layer.width) * 4 * layer.SampleBytes();
        std::byte* pixels = layer.NewPixels(row * static_cast<std::size_t>(layer.height));
        image.ReadAllPixels(progress);
        for (int y = 0; y < layer.height; y += kBand) {
            const int rows = std::min(kBand, layer.height - y);
            image.ReadRowsSamplesRGBA(image.Y0() + y, rows,
                                      pixels + static_cast<std::size_t>(y) * row);
        }
        return layer;
    } catch (const qzhost::pixelview::PixelViewError& error) {
        throw std::runtime_error(error.what());
    }
}

} // namespace qzview
