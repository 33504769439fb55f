// The image reader module: the host's image files read with OpenImageIO. Built as a
// library of its own (libqzhost-imageio.so) that the host loads when it first opens an
// image (ImageFile.h).
#include "pixelview/ImageFile.h"

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

/// `message` without the file's path, which the message that quotes it names already
/// ('Invalid image file "a.png": Not a PNG file' becomes 'Invalid image file: Not a PNG file').
std::string WithoutPath(std::string message, const std::string& path) {
    for (const std::string& quoted : {" \"" + path + "\"", " '" + path + "'", " " + path}) {
        for (std::size_t at = message.find(quoted); at != std::string::npos;
             at = message.find(quoted, at)) {
            message.erase(at, quoted.size());
        }
    }
    return message;
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

/// An image cache of this image's own and the image's buffer on it, ended (also when the
/// image fails to open) with what the libraries print kept in `messages`. The cache's
/// settings (unassociated alpha kept, bands of scanlines) must not leak into other
/// readers in the process.
struct CachedBuffer {
    explicit CachedBuffer(LibraryMessages& kept) : messages(kept) {
        const LibraryMessages::Trap trap(messages);
        cache = OIIO::ImageCache::create(/*shared=*/false);
        cache->attribute("unassociatedalpha", 1);
        cache->attribute("autotile", kScanlineBand);
        cache->attribute("autoscanline", 1);
    }
    ~CachedBuffer() {
        const LibraryMessages::Trap trap(messages);
        buffer.reset();
        OIIO::ImageCache::destroy(cache);
        // An error left in OpenImageIO would be printed as the program ends.
        (void)OIIO::geterror();
    }
    CachedBuffer(const CachedBuffer&) = delete;
    CachedBuffer& operator=(const CachedBuffer&) = delete;

    LibraryMessages& messages;
    OIIO::ImageCache* cache = nullptr;
    std::unique_ptr<OIIO::ImageBuf> buffer;
};

/// An image file read through an image cache of its own.
class OiioImageFile final : public ImageFile {
public:
    OiioImageFile(const std::string& path, int part);
    OiioImageFile(const OiioImageFile&) = delete;
    OiioImageFile& operator=(const OiioImageFile&) = delete;

    const ImageFileHeader& Header() const noexcept override { return header_; }
    void ReadValues(int x0, int x1, int y0, int y1, std::vector<float>& values) override;
    void ReadSamples(int x0, int x1, int y0, int y1, void* out) override;
    void ReadAllPixels(const std::function<void(double)>& progress) override;

private:
    /// The samples as ReadSamples gives them, but half floats as `floats` asks.
    void Fetch(int x0, int x1, int y0, int y1, bool floats, void* out);
    /// The values of an unsigned integer image, read as codes into `codes` (kept from one
    /// read to the next) and divided by the largest code.
    template <typename Code>
    void ReadCodeValues(int x0, int x1, int y0, int y1, std::vector<Code>& codes,
                        std::vector<float>& values);

    std::string path_;
    int part_ = 0;
    ImageFileHeader header_;
    // What the image libraries print themselves while they read is kept here, from the
    // cache's creation to its end.
    LibraryMessages messages_;
    CachedBuffer cached_{messages_};
    // The stored codes of unsigned integer images, their storage kept from one read to
    // the next.
    std::vector<std::uint16_t> words_;
    std::vector<std::uint8_t> bytes_;
};

OiioImageFile::OiioImageFile(const std::string& path, int part) : path_(path), part_(part) {
    RequireReadableFile(path);
    OIIO::ImageSpec config;
    config.attribute("oiio:UnassociatedAlpha", 1);
    bool opened = false;
    std::string message;
    {
        const LibraryMessages::Trap trap(messages_);
        cached_.buffer = std::make_unique<OIIO::ImageBuf>(path, part, 0, cached_.cache, &config);
        opened = cached_.buffer->init_spec(path, part, 0);
        if (opened) {
            // The header and the format's name, read while the libraries' words are kept.
            (void)cached_.buffer->nativespec();
            header_.formatName = cached_.buffer->file_format_name();
        } else {
            message = WithoutPath(FirstLine(cached_.buffer->geterror()), path);
            (void)OIIO::geterror();
        }
    }
    const std::string words = messages_.Take();
    if (!opened) {
        // OpenImageIO tries every reader on a file whose extension it does not know.
        const std::string format = FormatOfExtension(path);
        if (format.empty()) {
            throw BadRequest("unknown image format: no reader knows '" + path + "'");
        }
        throw BadRequest(
            WithLibraryWords("cannot read '" + path + "' as " + format + ": " + message, words));
    }
    const OIIO::ImageSpec& header = cached_.buffer->nativespec();
    if (header.deep) {
        throw BadRequest("cannot read '" + path + "': deep images have no single colour per pixel");
    }
    if (header.nchannels < 1 || header.width < 1 || header.height < 1 || header.depth > 1) {
        throw BadRequest("cannot read '" + path + "': it holds no two-dimensional colour image");
    }
    header_.x0 = header.x;
    header_.y0 = header.y;
    header_.width = header.width;
    header_.height = header.height;
    header_.channels = header.nchannels;
    // A header without a display window of its own has its pixels as the frame.
    const bool framed = header.full_width > 0 && header.full_height > 0;
    header_.displayX = framed ? header.full_x : header.x;
    header_.displayY = framed ? header.full_y : header.y;
    header_.displayWidth = framed ? header.full_width : header.width;
    header_.displayHeight = framed ? header.full_height : header.height;
    const float aspect = header.get_float_attribute("PixelAspectRatio", 1.0f);
    header_.pixelAspect = std::isfinite(aspect) && aspect > 0 ? static_cast<double>(aspect) : 1.0;

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
    header_.depth = ProjectDepthFor(floating, bits);
    // Files of unsigned 8- or 16-bit channels throughout are read as their integers.
    bool same_integers = !floating;
    for (int c = 0; c < header.nchannels; ++c) {
        same_integers = same_integers && header.channelformat(c) == header.format;
    }
    if (same_integers && header.format == OIIO::TypeDesc::UINT8) {
        header_.integerMax = 255;
    } else if (same_integers && header.format == OIIO::TypeDesc::UINT16) {
        header_.integerMax = (1u << bits) - 1u;
    }
    bool all_half = floating;
    for (int c = 0; c < header.nchannels; ++c) {
        all_half = all_half && header.channelformat(c) == OIIO::TypeDesc::HALF;
    }
    header_.samples = header_.integerMax == 255 ? SampleKind::Code8
                      : header_.integerMax > 0  ? SampleKind::Code16
                      : all_half                ? SampleKind::Half
                                                : SampleKind::Float;
    header_.channelType = ChannelTypeText(widest, bits);
    for (int c = 0; c < header.nchannels; ++c) {
        header_.channelList.push_back(header.channel_name(c));
        header_.channelNames += (c > 0 ? "," : "") + header_.channelList.back();
    }
    header_.alphaHint = header.alpha_channel < header.nchannels ? header.alpha_channel : -1;
    // The parts of a multi-part OpenEXR file; the subimages of other formats (the pages of
    // a document, the frames of an animation) are not parts of one picture.
    if (header_.formatName == "openexr") {
        header_.parts = std::max(1, cached_.buffer->nsubimages());
        header_.partName =
            header.get_string_attribute("oiio:subimagename", header.get_string_attribute("name"));
    }
}

void OiioImageFile::ReadSamples(int x0, int x1, int y0, int y1, void* out) {
    Fetch(x0, x1, y0, y1, false, out);
}

void OiioImageFile::Fetch(int x0, int x1, int y0, int y1, bool floats, void* out) {
    const auto count = static_cast<std::size_t>(header_.channels) *
                       static_cast<std::size_t>(x1 - x0) * static_cast<std::size_t>(y1 - y0);
    const OIIO::ImageBuf& buffer = *cached_.buffer;
    const OIIO::ROI area(x0, x1, y0, y1, 0, 1, 0, header_.channels);
    std::string message;
    {
        const LibraryMessages::Trap trap(messages_);
        // Integer codes are fetched in their own type, which OpenImageIO hands over
        // unchanged.
        switch (header_.samples) {
        case SampleKind::Code8:
            (void)buffer.get_pixels(area, OIIO::TypeDesc::UINT8, out);
            break;
        case SampleKind::Code16: {
            auto* words = static_cast<std::uint16_t*>(out);
            if (buffer.get_pixels(area, OIIO::TypeDesc::UINT16, words) &&
                header_.integerMax != 65535) {
                // Formats of 9 to 15 bits come in 16-bit words that repeat their top
                // bits; the stored code is the word scaled back.
                for (std::size_t c = 0; c < count; ++c) {
                    words[c] = static_cast<std::uint16_t>(
                        std::round(words[c] * static_cast<double>(header_.integerMax) / 65535.0));
                }
            }
            break;
        }
        case SampleKind::Half:
            (void)buffer.get_pixels(area, floats ? OIIO::TypeDesc::FLOAT : OIIO::TypeDesc::HALF,
                                    out);
            break;
        case SampleKind::Float:
            (void)buffer.get_pixels(area, OIIO::TypeDesc::FLOAT, out);
            break;
        }
        if (buffer.has_error()) {
            message = FirstLine(buffer.geterror());
            (void)OIIO::geterror();
        }
    }
    if (!message.empty()) {
        throw BadRequest(WithLibraryWords("cannot read the pixels of '" + path_ + "': " + message,
                                          messages_.Take()));
    }
}

void OiioImageFile::ReadValues(int x0, int x1, int y0, int y1, std::vector<float>& values) {
    const auto count = static_cast<std::size_t>(header_.channels) *
                       static_cast<std::size_t>(x1 - x0) * static_cast<std::size_t>(y1 - y0);
    values.assign(count, 0.0f);
    if (header_.samples == SampleKind::Float || header_.samples == SampleKind::Half) {
        Fetch(x0, x1, y0, y1, true, values.data());
        return;
    }
    if (header_.samples == SampleKind::Code8) {
        ReadCodeValues(x0, x1, y0, y1, bytes_, values);
    } else {
        ReadCodeValues(x0, x1, y0, y1, words_, values);
    }
}

template <typename Code>
void OiioImageFile::ReadCodeValues(int x0, int x1, int y0, int y1, std::vector<Code>& codes,
                                   std::vector<float>& values) {
    // Unsigned integers k of n bits become k / (2^n - 1), correctly rounded.
    const auto scale = static_cast<float>(header_.integerMax);
    codes.resize(values.size());
    ReadSamples(x0, x1, y0, y1, codes.data());
    for (std::size_t c = 0; c < values.size(); ++c) {
        values[c] = static_cast<float>(codes[c]) / scale;
    }
}

bool ReportProgress(void* opaque, float done) {
    const auto& progress = *static_cast<const std::function<void(double)>*>(opaque);
    if (progress) {
        progress(static_cast<double>(done));
    }
    return false; // never cancelled
}

void OiioImageFile::ReadAllPixels(const std::function<void(double)>& progress) {
    std::string message;
    {
        const LibraryMessages::Trap trap(messages_);
        auto callback = progress;
        if (!cached_.buffer->read(part_, 0, /*force=*/true, OIIO::TypeDesc::UNKNOWN,
                                  &ReportProgress, &callback)) {
            message = WithoutPath(FirstLine(cached_.buffer->geterror()), path_);
            (void)OIIO::geterror();
        }
    }
    if (!message.empty()) {
        throw BadRequest(WithLibraryWords("cannot read the pixels of '" + path_ + "': " + message,
                                          messages_.Take()));
    }
    if (progress) {
        progress(1.0);
    }
}

} // namespace

} // namespace qzhost::pixelview

extern "C" void QZHostImageIO_ReadableFormats(std::vector<qzhost::pixelview::ImageFormat>& out) {
    out.clear();
    for (const auto& [format, extensions] : OIIO::get_extension_map()) {
        qzhost::pixelview::ImageFormat entry{format, {}};
        for (const std::string& extension : extensions) {
            entry.extensions.push_back(qzhost::pixelview::Lower(extension));
        }
        out.push_back(std::move(entry));
    }
}

extern "C" qzhost::pixelview::ImageFile* QZHostImageIO_OpenImageFile(const std::string& path,
                                                                     int part) {
    return new qzhost::pixelview::OiioImageFile(path, part);
}
