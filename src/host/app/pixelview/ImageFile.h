// An image file opened by the image reader module (libqzhost-imageio.so, on OpenImageIO):
// its header as the host reads it, and its pixels. The module is loaded the first time an
// image is opened, so that the host's commands that read no image (script, validate,
// resource, plug-in info) start without loading OpenImageIO and the many libraries
// beneath it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace qzhost::pixelview {

/// How an image's samples are kept when it is held in memory in its own type: the codes
/// of an unsigned integer image (8-bit, or up to 16 bits in 16-bit words), or half or full
/// floats.
enum class SampleKind : std::uint8_t { Code8, Code16, Half, Float };

/// The bytes of one sample of `kind`.
constexpr std::size_t SampleBytes(SampleKind kind) noexcept {
    return kind == SampleKind::Code8 ? 1 : kind == SampleKind::Float ? 4 : 2;
}

/// What the host reads from an image's header.
struct ImageFileHeader {
    /// The pixel rectangle (the data window): columns x0 to x0 + width - 1, rows y0 to
    /// y0 + height - 1.
    int x0 = 0;
    int y0 = 0;
    int width = 0;
    int height = 0;
    /// The frame that the image is meant to be seen in (the display window): columns
    /// displayX to displayX + displayWidth - 1, rows displayY to displayY + displayHeight - 1.
    /// The pixels may lie inside it, around it (overscan) or beside it.
    int displayX = 0;
    int displayY = 0;
    int displayWidth = 0;
    int displayHeight = 0;
    /// How many times wider than tall a pixel is meant to be shown (1: square pixels).
    double pixelAspect = 1.0;
    /// The project depth that the format gives (0 8-bit, 1 16-bit, 2 float).
    std::int8_t depth = 0;
    /// The reader's name for the format ("openexr", "png", "tiff"...).
    std::string formatName;
    /// The channel type in words: "8-bit", "16-bit", "10-bit", "half float", "float"...
    std::string channelType;
    /// The channel names, comma-separated ("R,G,B,A").
    std::string channelNames;
    /// The channel names in the file's order (empty for a channel that the file leaves
    /// unnamed), and how many there are.
    std::vector<std::string> channelList;
    int channels = 0;
    /// The channel that the reader takes for alpha, or -1.
    int alphaHint = -1;
    /// The parts of the file (the parts of a multi-part OpenEXR file; 1 for other files),
    /// and this part's name (empty when it has none).
    int parts = 1;
    std::string partName;
    /// The largest code of an image of unsigned integers of up to 16 bits (255, 1023,
    /// 65535...); 0 for other images, whose values are read as floats.
    std::uint32_t integerMax = 0;
    /// The type in which ReadSamples gives the pixels.
    SampleKind samples = SampleKind::Float;
};

class ImageFile {
public:
    virtual ~ImageFile() = default;

    virtual const ImageFileHeader& Header() const noexcept = 0;

    /// The channel values of the pixels of columns x0..x1-1, rows y0..y1-1 (channels of a
    /// pixel together, pixels in rows) into `values`, unsigned integers k of n bits as
    /// k / (2^n - 1). Throws BadRequest when the pixels cannot be read.
    virtual void ReadValues(int x0, int x1, int y0, int y1, std::vector<float>& values) = 0;

    /// The samples of the pixels of columns x0..x1-1, rows y0..y1-1 (channels of a pixel
    /// together, pixels in rows) into `out`, in the header's sample kind: codes k whose
    /// value is k / integerMax, or half or full floats that are the values. Throws
    /// BadRequest when the pixels cannot be read.
    virtual void ReadSamples(int x0, int x1, int y0, int y1, void* out) = 0;
    /// Reads every pixel into memory at once, calling `progress` with the share done (0
    /// to 1). Throws BadRequest when it cannot.
    virtual void ReadAllPixels(const std::function<void(double)>& progress) = 0;
};

/// Opens part `part` of `path` (its full-resolution level) and reads its header, loading
/// the image reader module from beside the program at the first call. Throws BadRequest
/// when the file is missing or cannot be read, when no reader knows its format, when it
/// has no such part or when it holds no two-dimensional image, and HostFailed when the
/// module cannot be loaded.
std::unique_ptr<ImageFile> OpenImageFile(const std::string& path, int part = 0);

/// A format that the image reader reads, and the file name extensions (lower case, no
/// dot) that it knows it by.
struct ImageFormat {
    std::string name;
    std::vector<std::string> extensions;
};

/// The formats that the image reader reads, by name, loading the module as OpenImageFile
/// does. Throws HostFailed when the module cannot be loaded.
std::vector<ImageFormat> ReadableImageFormats();

} // namespace qzhost::pixelview

/// The module's entry that opens `path` as OpenImageFile does (the caller owns the
/// result). It throws the host's exceptions, which the host catches: both sides are built
/// together, with the same compiler and standard library.
extern "C" qzhost::pixelview::ImageFile* QZHostImageIO_OpenImageFile(const std::string& path,
                                                                     int part);
/// The module's list of the formats it reads, as ReadableImageFormats gives it.
extern "C" void QZHostImageIO_ReadableFormats(std::vector<qzhost::pixelview::ImageFormat>& out);
