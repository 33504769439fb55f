#include "pixelview/PixelViewImage.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <vector>

#include <OpenImageIO/imagebuf.h>
#include <OpenImageIO/imagecache.h>
#include <OpenImageIO/imageio.h>

#include "pixelview/PixelViewError.h"
#include "pixelview/ProjectDepthRule.h"

namespace qzhost::pixelview {

namespace {

/// Rows per band in which the cache reads images stored as scanlines, so that a point
/// costs a band, not the whole image.
constexpr int kScanlineBand = 64;

/// The first line of an OpenImageIO message, without trailing blanks.
std::string FirstLine(const std::string& message) {
    std::string line = message.substr(0, message.find('\n'));
    while (!line.empty() && std::isspace(static_cast<unsigned char>(line.back()))) {
        line.pop_back();
    }
    return line.empty() ? "unknown error" : line;
}

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

/// The format whose readers claim the file's extension, or empty.
std::string FormatOfExtension(const std::string& path) {
    std::string extension = std::filesystem::path(path).extension().string();
    if (extension.empty()) {
        return {};
    }
    extension = Lower(extension.substr(1));
    for (const auto& [format, extensions] : OIIO::get_extension_map()) {
        if (std::find(extensions.begin(), extensions.end(), extension) != extensions.end()) {
            return format;
        }
    }
    return {};
}

/// Checks that `path` names a file that this process can read; throws BadRequest.
void RequireReadableFile(const std::string& path) {
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status)) {
        throw BadRequest("no such file '" + path + "'");
    }
    if (std::filesystem::is_directory(status)) {
        throw BadRequest("'" + path + "' is a directory, not an image");
    }
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        const int why = errno;
        throw BadRequest("cannot read '" + path + "': " + std::strerror(why));
    }
}

std::string ChannelTypeText(OIIO::TypeDesc type, int bits) {
    if (type.basetype == OIIO::TypeDesc::HALF) {
        return "half float";
    }
    if (type.is_floating_point()) {
        return type.size() == 8 ? "double float" : "float";
    }
    return std::to_string(bits) + "-bit";
}

int ChannelIndex(const OIIO::ImageSpec& header, const char* name) {
    const int index = header.channelindex(name);
    if (index >= 0) {
        return index;
    }
    return header.channelindex(Lower(name));
}

} // namespace

struct PixelViewImage::Reader {
    // The cache belongs to this image alone: its settings (unassociated alpha kept, bands
    // of scanlines) must not leak into other readers in the process.
    OIIO::ImageCache* cache = nullptr;
    std::unique_ptr<OIIO::ImageBuf> buffer;

    Reader() : cache(OIIO::ImageCache::create(/*shared=*/false)) {
        cache->attribute("unassociatedalpha", 1);
        cache->attribute("autotile", kScanlineBand);
        cache->attribute("autoscanline", 1);
    }
    ~Reader() {
        buffer.reset();
        OIIO::ImageCache::destroy(cache);
    }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;
};

PixelViewImage::PixelViewImage(const std::string& path) : path_(path), reader_(new Reader) {
    RequireReadableFile(path);
    OIIO::ImageSpec config;
    config.attribute("oiio:UnassociatedAlpha", 1);
    reader_->buffer = std::make_unique<OIIO::ImageBuf>(path, 0, 0, reader_->cache, &config);
    OIIO::ImageBuf& buffer = *reader_->buffer;
    if (!buffer.init_spec(path, 0, 0)) {
        const std::string message = FirstLine(buffer.geterror());
        // OpenImageIO tries every reader on a file whose extension it does not know.
        const std::string format = FormatOfExtension(path);
        if (format.empty()) {
            throw BadRequest("unknown image format: no reader knows '" + path + "'");
        }
        throw BadRequest("cannot read '" + path + "' as " + format + ": " + message);
    }
    const OIIO::ImageSpec& header = buffer.nativespec();
    if (header.deep) {
        throw BadRequest("cannot read '" + path + "': deep images have no single colour per pixel");
    }
    if (header.nchannels < 1 || header.width < 1 || header.height < 1 || header.depth > 1) {
        throw BadRequest("cannot read '" + path + "': it holds no two-dimensional colour image");
    }
    x0_ = header.x;
    y0_ = header.y;
    width_ = header.width;
    height_ = header.height;
    channels_ = header.nchannels;
    formatName_ = buffer.file_format_name();

    // The depth follows the widest channel; formats that keep 10 or 12 bits in 16-bit
    // words say so in their metadata.
    const int declared_bits = header.get_int_attribute("oiio:BitsPerSample", 0);
    bool floating = false;
    int bits = 0;
    OIIO::TypeDesc widest = header.format;
    for (int c = 0; c < header.nchannels; ++c) {
        const OIIO::TypeDesc type = header.channelformat(c);
        floating = floating || type.is_floating_point();
        if (static_cast<int>(type.size()) * 8 > bits) {
            bits = static_cast<int>(type.size()) * 8;
            widest = type;
        }
    }
    if (!floating && declared_bits > 0 && declared_bits < bits) {
        bits = declared_bits;
    }
    depth_ = ProjectDepthFor(floating, bits);
    // Files of unsigned 8- or 16-bit channels throughout are read as their integers.
    bool same_integers = !floating;
    for (int c = 0; c < header.nchannels; ++c) {
        same_integers = same_integers && header.channelformat(c) == header.format;
    }
    if (same_integers && header.format == OIIO::TypeDesc::UINT8) {
        integerMax_ = 255;
    } else if (same_integers && header.format == OIIO::TypeDesc::UINT16) {
        integerMax_ = (1u << bits) - 1u;
    }
    channelType_ = ChannelTypeText(widest, bits);
    for (int c = 0; c < header.nchannels; ++c) {
        if (c > 0) {
            channelNames_ += ',';
        }
        channelNames_ += header.channel_name(c);
    }

    alpha_ = header.alpha_channel >= 0 && header.alpha_channel < header.nchannels
                 ? header.alpha_channel
                 : ChannelIndex(header, "A");
    red_ = ChannelIndex(header, "R");
    green_ = ChannelIndex(header, "G");
    blue_ = ChannelIndex(header, "B");
    if (red_ < 0 || green_ < 0 || blue_ < 0) {
        // No channels named for red, green and blue: the first three colour channels in
        // order, or one grey channel for all three.
        std::vector<int> colour;
        for (int c = 0; c < header.nchannels; ++c) {
            if (c != alpha_) {
                colour.push_back(c);
            }
        }
        if (colour.empty()) {
            throw BadRequest("cannot read '" + path + "': it has an alpha channel only");
        }
        const bool grey = colour.size() < 3;
        red_ = colour[0];
        green_ = grey ? colour[0] : colour[1];
        blue_ = grey ? colour[0] : colour[2];
    }
}

PixelViewImage::~PixelViewImage() = default;

PixelARGB PixelViewImage::PixelAt(int x, int y) const {
    std::vector<float> values(static_cast<std::size_t>(channels_), 0.0f);
    const OIIO::ImageBuf& buffer = *reader_->buffer;
    const OIIO::ROI pixel(x, x + 1, y, y + 1, 0, 1, 0, channels_);
    if (integerMax_ > 0) {
        // Unsigned integers k of n bits become k / (2^n - 1), correctly rounded. They are
        // fetched in their own type, which OpenImageIO hands over unchanged.
        std::vector<std::uint16_t> stored(static_cast<std::size_t>(channels_), 0);
        bool fetched = false;
        if (integerMax_ == 255) {
            std::vector<std::uint8_t> bytes(stored.size(), 0);
            fetched = buffer.get_pixels(pixel, OIIO::TypeDesc::UINT8, bytes.data());
            std::copy(bytes.begin(), bytes.end(), stored.begin());
        } else {
            fetched = buffer.get_pixels(pixel, OIIO::TypeDesc::UINT16, stored.data());
        }
        if (fetched) {
            const auto scale = static_cast<float>(integerMax_);
            for (std::size_t c = 0; c < stored.size(); ++c) {
                // Formats of 9 to 15 bits come in 16-bit words that repeat their top bits;
                // the stored code is the word scaled back.
                const double code =
                    integerMax_ == 255 || integerMax_ == 65535
                        ? stored[c]
                        : std::round(stored[c] * static_cast<double>(integerMax_) / 65535.0);
                values[c] = static_cast<float>(code) / scale;
            }
        }
    } else {
        buffer.getpixel(x, y, 0, values.data(), channels_);
    }
    if (buffer.has_error()) {
        throw BadRequest("cannot read the pixels of '" + path_ +
                         "': " + FirstLine(buffer.geterror()));
    }
    const float alpha = alpha_ >= 0 ? values[static_cast<std::size_t>(alpha_)] : 1.0f;
    return {alpha, values[static_cast<std::size_t>(red_)], values[static_cast<std::size_t>(green_)],
            values[static_cast<std::size_t>(blue_)]};
}

} // namespace qzhost::pixelview
