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

#include "pixelview/LibraryMessages.h"
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

/// The channel named `name` (or its lower-case form), or -1. Looked up in the names that
/// the header has: some readers name fewer channels than the image has.
int ChannelIndex(const OIIO::ImageSpec& header, const char* name) {
    const int named = std::min(header.nchannels, static_cast<int>(header.channelnames.size()));
    for (const std::string& wanted : {std::string(name), Lower(name)}) {
        for (int c = 0; c < named; ++c) {
            if (header.channelnames[static_cast<std::size_t>(c)] == wanted) {
                return c;
            }
        }
    }
    return -1;
}

} // namespace

struct PixelViewImage::Reader {
    // What the image libraries print themselves while they read is kept here, from the
    // cache's creation to its end.
    LibraryMessages messages;
    // The cache belongs to this image alone: its settings (unassociated alpha kept, bands
    // of scanlines) must not leak into other readers in the process.
    OIIO::ImageCache* cache = nullptr;
    std::unique_ptr<OIIO::ImageBuf> buffer;
    // The channel values of one pixel, their storage kept from one pixel to the next.
    std::vector<float> values;
    std::vector<std::uint16_t> words;
    std::vector<std::uint8_t> bytes;

    Reader() {
        const LibraryMessages::Trap trap(messages);
        cache = OIIO::ImageCache::create(/*shared=*/false);
        cache->attribute("unassociatedalpha", 1);
        cache->attribute("autotile", kScanlineBand);
        cache->attribute("autoscanline", 1);
    }
    ~Reader() {
        const LibraryMessages::Trap trap(messages);
        buffer.reset();
        OIIO::ImageCache::destroy(cache);
        // An error left in OpenImageIO would be printed as the program ends.
        (void)OIIO::geterror();
    }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;
};

PixelViewImage::PixelViewImage(const std::string& path) : path_(path), reader_(new Reader) {
    RequireReadableFile(path);
    OIIO::ImageSpec config;
    config.attribute("oiio:UnassociatedAlpha", 1);
    bool opened = false;
    std::string message;
    {
        const LibraryMessages::Trap trap(reader_->messages);
        reader_->buffer = std::make_unique<OIIO::ImageBuf>(path, 0, 0, reader_->cache, &config);
        opened = reader_->buffer->init_spec(path, 0, 0);
        if (opened) {
            // The header and the format's name, read while the libraries' words are kept.
            (void)reader_->buffer->nativespec();
            formatName_ = reader_->buffer->file_format_name();
        } else {
            message = FirstLine(reader_->buffer->geterror());
            (void)OIIO::geterror();
        }
    }
    const std::string words = reader_->messages.Take();
    OIIO::ImageBuf& buffer = *reader_->buffer;
    if (!opened) {
        // OpenImageIO tries every reader on a file whose extension it does not know.
        const std::string format = FormatOfExtension(path);
        if (format.empty()) {
            throw BadRequest("unknown image format: no reader knows '" + path + "'");
        }
        throw BadRequest(
            WithLibraryWords("cannot read '" + path + "' as " + format + ": " + message, words));
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

void PixelViewImage::ReadValues(int x0, int x1, int y0, int y1, std::vector<float>& values) const {
    Reader& reader = *reader_;
    const auto channels = static_cast<std::size_t>(channels_);
    const auto count =
        channels * static_cast<std::size_t>(x1 - x0) * static_cast<std::size_t>(y1 - y0);
    values.assign(count, 0.0f);
    const OIIO::ImageBuf& buffer = *reader.buffer;
    const OIIO::ROI area(x0, x1, y0, y1, 0, 1, 0, channels_);
    std::string message;
    {
        const LibraryMessages::Trap trap(reader.messages);
        if (integerMax_ > 0) {
            // Unsigned integers k of n bits become k / (2^n - 1), correctly rounded. They
            // are fetched in their own type, which OpenImageIO hands over unchanged.
            std::vector<std::uint16_t>& stored = reader.words;
            stored.assign(count, 0);
            bool fetched = false;
            if (integerMax_ == 255) {
                reader.bytes.assign(count, 0);
                fetched = buffer.get_pixels(area, OIIO::TypeDesc::UINT8, reader.bytes.data());
                std::copy(reader.bytes.begin(), reader.bytes.end(), stored.begin());
            } else {
                fetched = buffer.get_pixels(area, OIIO::TypeDesc::UINT16, stored.data());
            }
            if (fetched) {
                const auto scale = static_cast<float>(integerMax_);
                for (std::size_t c = 0; c < count; ++c) {
                    // Formats of 9 to 15 bits come in 16-bit words that repeat their top
                    // bits; the stored code is the word scaled back.
                    const double code =
                        integerMax_ == 255 || integerMax_ == 65535
                            ? stored[c]
                            : std::round(stored[c] * static_cast<double>(integerMax_) / 65535.0);
                    values[c] = static_cast<float>(code) / scale;
                }
            }
        } else {
            (void)buffer.get_pixels(area, OIIO::TypeDesc::FLOAT, values.data());
        }
        if (buffer.has_error()) {
            message = FirstLine(buffer.geterror());
            (void)OIIO::geterror();
        }
    }
    if (!message.empty()) {
        throw BadRequest(WithLibraryWords("cannot read the pixels of '" + path_ + "': " + message,
                                          reader.messages.Take()));
    }
}

PixelARGB PixelViewImage::PixelAt(int x, int y) const {
    std::vector<float>& values = reader_->values;
    ReadValues(x, x + 1, y, y + 1, values);
    const float alpha = alpha_ >= 0 ? values[static_cast<std::size_t>(alpha_)] : 1.0f;
    return {alpha, values[static_cast<std::size_t>(red_)], values[static_cast<std::size_t>(green_)],
            values[static_cast<std::size_t>(blue_)]};
}

namespace {

bool ReportProgress(void* opaque, float done) {
    const auto& progress = *static_cast<const std::function<void(double)>*>(opaque);
    if (progress) {
        progress(static_cast<double>(done));
    }
    return false; // never cancelled
}

} // namespace

void PixelViewImage::ReadAllPixels(const std::function<void(double)>& progress) {
    Reader& reader = *reader_;
    std::string message;
    {
        const LibraryMessages::Trap trap(reader.messages);
        auto callback = progress;
        if (!reader.buffer->read(0, 0, /*force=*/true, OIIO::TypeDesc::UNKNOWN, &ReportProgress,
                                 &callback)) {
            message = FirstLine(reader.buffer->geterror());
            (void)OIIO::geterror();
        }
    }
    if (!message.empty()) {
        throw BadRequest(WithLibraryWords("cannot read the pixels of '" + path_ + "': " + message,
                                          reader.messages.Take()));
    }
    if (progress) {
        progress(1.0);
    }
}

void PixelViewImage::ReadRowsRGBA(int y, int rows, float* out) const {
    std::vector<float> values;
    ReadValues(x0_, x0_ + width_, y, y + rows, values);
    const auto channels = static_cast<std::size_t>(channels_);
    const std::size_t pixels = static_cast<std::size_t>(width_) * static_cast<std::size_t>(rows);
    for (std::size_t p = 0; p < pixels; ++p) {
        const float* pixel = values.data() + p * channels;
        out[4 * p + 0] = pixel[red_];
        out[4 * p + 1] = pixel[green_];
        out[4 * p + 2] = pixel[blue_];
        out[4 * p + 3] = alpha_ >= 0 ? pixel[alpha_] : 1.0f;
    }
}

} // namespace qzhost::pixelview
