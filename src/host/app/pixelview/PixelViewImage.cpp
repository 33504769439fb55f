#include "pixelview/PixelViewImage.h"

#include <cstddef>
#include <cstdint>

#include "pixelview/PixelViewError.h"

namespace qzhost::pixelview {

PixelViewImage::PixelViewImage(const std::string& path) : path_(path) {
    parts_.push_back(OpenImageFile(path, 0));
    const ImageFileHeader& first = parts_[0]->Header();
    parts_.resize(static_cast<std::size_t>(std::max(1, first.parts)));
    std::vector<PartChannels> channels;
    for (int p = 0; p < static_cast<int>(parts_.size()); ++p) {
        const ImageFileHeader& header = Part(p).Header();
        channels.push_back({header.partName, header.channelList, header.alphaHint});
    }
    sets_ = GroupChannelSets(channels);
    if (sets_.empty()) {
        throw BadRequest("cannot read '" + path + "': it has no channel to show");
    }
    ChooseSet(0);
}

PixelViewImage::~PixelViewImage() = default;

ImageFile& PixelViewImage::Part(int part) {
    std::unique_ptr<ImageFile>& file = parts_.at(static_cast<std::size_t>(part));
    if (!file) {
        file = OpenImageFile(path_, part);
    }
    return *file;
}

void PixelViewImage::ChooseSet(int index) {
    const ChannelSet& set = sets_.at(static_cast<std::size_t>(index));
    file_ = &Part(set.part);
    header_ = &file_->Header();
    set_ = index;
}

const ImageFileHeader& PixelViewImage::PartHeader(int part) {
    return Part(part).Header();
}

void PixelViewImage::ReadAllPartPixels(int part, const std::function<void(double)>& progress) {
    Part(part).ReadAllPixels(progress);
}

void PixelViewImage::ReadPartRows(int part, int y, int rows, void* out) {
    ImageFile& file = Part(part);
    const ImageFileHeader& header = file.Header();
    file.ReadSamples(header.x0, header.x0 + header.width, y, y + rows, out);
}

PixelARGB PixelViewImage::PixelAt(int x, int y) const {
    PixelsAt(x, x + 1, y, pixels_);
    return pixels_.front();
}

void PixelViewImage::PixelsAt(int x0, int x1, int y, std::vector<PixelARGB>& out) const {
    file_->ReadValues(x0, x1, y, y + 1, values_);
    const ChannelSet& set = Set();
    const auto channels = static_cast<std::size_t>(header_->channels);
    out.resize(static_cast<std::size_t>(x1 - x0));
    for (std::size_t p = 0; p < out.size(); ++p) {
        const float* pixel = values_.data() + p * channels;
        const auto value = [pixel](int channel, float missing) {
            return channel >= 0 ? pixel[channel] : missing;
        };
        out[p] = {value(set.alpha, 1.0f), value(set.red, 0.0f), value(set.green, 0.0f),
                  value(set.blue, 0.0f)};
    }
    if (transform_) {
        // The transform takes red, green, blue, alpha; the pixels' alpha is kept as read.
        rgba_.resize(out.size() * 4);
        for (std::size_t p = 0; p < out.size(); ++p) {
            rgba_[p * 4 + 0] = out[p][1];
            rgba_[p * 4 + 1] = out[p][2];
            rgba_[p * 4 + 2] = out[p][3];
            rgba_[p * 4 + 3] = out[p][0];
        }
        transform_->Apply(rgba_.data(), out.size());
        for (std::size_t p = 0; p < out.size(); ++p) {
            out[p][1] = rgba_[p * 4 + 0];
            out[p][2] = rgba_[p * 4 + 1];
            out[p][3] = rgba_[p * 4 + 2];
        }
    }
}

void PixelViewImage::SetColourTransform(std::shared_ptr<const ColourTransform> transform) {
    transform_ = transform && !transform->Identity() ? std::move(transform) : nullptr;
}

void PixelViewImage::ReadAllPixels(const std::function<void(double)>& progress) {
    file_->ReadAllPixels(progress);
}

namespace {

/// Picks red, green, blue and alpha of `set` out of `pixels` pixels of `channels` samples
/// of type T; `one` is the alpha of a set without alpha.
template <typename T>
void PickRGBA(const ChannelSet& set, int channels, const T* in, std::size_t pixels, T one, T* out) {
    const auto stride = static_cast<std::size_t>(channels);
    const auto pick = [](const T* pixel, int channel, T missing) {
        return channel >= 0 ? pixel[channel] : missing;
    };
    for (std::size_t p = 0; p < pixels; ++p) {
        const T* pixel = in + p * stride;
        out[4 * p + 0] = pick(pixel, set.red, T{});
        out[4 * p + 1] = pick(pixel, set.green, T{});
        out[4 * p + 2] = pick(pixel, set.blue, T{});
        out[4 * p + 3] = pick(pixel, set.alpha, one);
    }
}

} // namespace

void PickSamplesRGBA(const ChannelSet& set, int channels, SampleKind kind,
                     std::uint32_t integer_max, const void* in, std::size_t pixels, void* out) {
    switch (kind) {
    case SampleKind::Code8:
        PickRGBA(set, channels, static_cast<const std::uint8_t*>(in), pixels, std::uint8_t{255},
                 static_cast<std::uint8_t*>(out));
        return;
    case SampleKind::Code16:
        PickRGBA(set, channels, static_cast<const std::uint16_t*>(in), pixels,
                 static_cast<std::uint16_t>(integer_max), static_cast<std::uint16_t*>(out));
        return;
    case SampleKind::Half:
        // Half floats are moved as their bits; 0x3C00 is 1.0.
        PickRGBA(set, channels, static_cast<const std::uint16_t*>(in), pixels,
                 std::uint16_t{0x3C00}, static_cast<std::uint16_t*>(out));
        return;
    case SampleKind::Float:
        PickRGBA(set, channels, static_cast<const float*>(in), pixels, 1.0f,
                 static_cast<float*>(out));
        return;
    }
}

void PixelViewImage::ReadRowsSamplesRGBA(int y, int rows, void* out) const {
    const ImageFileHeader& header = *header_;
    const std::size_t pixels =
        static_cast<std::size_t>(header.width) * static_cast<std::size_t>(rows);
    samples_.resize(pixels * static_cast<std::size_t>(header.channels) *
                    SampleBytes(header.samples));
    file_->ReadSamples(header.x0, header.x0 + header.width, y, y + rows, samples_.data());
    PickSamplesRGBA(Set(), header.channels, header.samples, header.integerMax, samples_.data(),
                    pixels, out);
}

} // namespace qzhost::pixelview
