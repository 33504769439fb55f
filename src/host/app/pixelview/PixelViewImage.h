// The image that `qzhost inspect` looks into, read by the image reader module: its frame and
// pixel rectangle, the project depth that its format gives, its channel sets (one of which
// is read at a time), and the colour of one pixel as the host's viewer hands it to the Info
// palette.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "pixelview/ChannelSets.h"
#include "pixelview/ImageFile.h"
#include "qzhost/ColourTransform.h"

namespace qzhost::pixelview {

/// The colour of one pixel: alpha, red, green, blue, as the Info palette suite takes it.
using PixelARGB = std::array<float, 4>;

class PixelViewImage {
public:
    /// Opens `path` (its full-resolution level; the parts of a multi-part file) and reads
    /// its headers; pixels are read when asked for. The first channel set is chosen. Throws
    /// BadRequest when the file is missing or cannot be read, when no reader knows its format, or
    /// when it holds no colour, and HostFailed when the image reader module cannot be loaded.
    explicit PixelViewImage(const std::string& path);
    ~PixelViewImage();
    PixelViewImage(const PixelViewImage&) = delete;
    PixelViewImage& operator=(const PixelViewImage&) = delete;

    const std::string& Path() const noexcept { return path_; }
    /// The pixel rectangle (the data window) of the chosen set's part: columns x0 to
    /// x0 + width - 1, rows y0 to y0 + height - 1.
    int X0() const noexcept { return header_->x0; }
    int Y0() const noexcept { return header_->y0; }
    int Width() const noexcept { return header_->width; }
    int Height() const noexcept { return header_->height; }
    /// The display window of the chosen set's part: the frame that the image is meant to be
    /// seen in.
    int DisplayX() const noexcept { return header_->displayX; }
    int DisplayY() const noexcept { return header_->displayY; }
    int DisplayWidth() const noexcept { return header_->displayWidth; }
    int DisplayHeight() const noexcept { return header_->displayHeight; }
    /// Whether the pixel rectangle is another than the frame.
    bool Framed() const noexcept {
        return header_->displayX != header_->x0 || header_->displayY != header_->y0 ||
               header_->displayWidth != header_->width || header_->displayHeight != header_->height;
    }
    /// How many times wider than tall a pixel is meant to be shown.
    double PixelAspect() const noexcept { return header_->pixelAspect; }
    bool Contains(int x, int y) const noexcept {
        return x >= header_->x0 && y >= header_->y0 && x - header_->x0 < header_->width &&
               y - header_->y0 < header_->height;
    }

    /// The project depth that the image's format gives: 0 for 8-bit integers, 1 for
    /// integers of 9 to 16 bits, 2 for half and float (and wider integers).
    std::int8_t ProjectDepth() const noexcept { return header_->depth; }
    /// The reader's name for the format ("openexr", "png", "tiff"...).
    const std::string& FormatName() const noexcept { return header_->formatName; }
    /// The channel type in words: "8-bit", "16-bit", "10-bit", "half float", "float"...
    const std::string& ChannelType() const noexcept { return header_->channelType; }
    /// The channel names of the chosen set's part, comma-separated ("R,G,B,A").
    const std::string& ChannelNames() const noexcept { return header_->channelNames; }
    /// Whether the chosen set reads an alpha channel.
    bool HasAlpha() const noexcept { return Set().alpha >= 0; }

    /// The channel sets, and the one that is read.
    const std::vector<ChannelSet>& Sets() const noexcept { return sets_; }
    const ChannelSet& Set() const noexcept { return sets_[static_cast<std::size_t>(set_)]; }
    /// Chooses set `index` of Sets(), opening its part when it is first needed. Throws
    /// BadRequest when the part cannot be read.
    void ChooseSet(int index);

    /// The pixel at column `x`, row `y` (inside the pixel rectangle) in the chosen set: the
    /// channel values as floats (unsigned integers scaled to 0-1: a code k of n bits is
    /// k / (2^n - 1), rounded once to the nearest float), a grey set giving the same value
    /// to red, green and blue, alpha 1 when the set has none. Values are the file's own
    /// (alpha that the file keeps unassociated is not multiplied in), their colour turned
    /// by the colour transform when one is set. Throws BadRequest when the pixels cannot
    /// be read.
    PixelARGB PixelAt(int x, int y) const;
    /// The pixels of columns `x0` to `x1 - 1` of row `y` (all inside the pixel rectangle),
    /// each as PixelAt gives it, into `out`, read at once.
    void PixelsAt(int x0, int x1, int y, std::vector<PixelARGB>& out) const;

    /// Makes PixelAt and PixelsAt turn each pixel's red, green and blue by `transform`
    /// (from the image's input colour space to the working space); alpha stays the
    /// file's. Null: the file's values as they are. The samples of ReadRowsSamplesRGBA
    /// and ReadPartRows stay the file's.
    void SetColourTransform(std::shared_ptr<const ColourTransform> transform);

    /// Reads every pixel of the image into memory at once (rather than a band at a time
    /// through the image cache), calling `progress` with the share done (0 to 1) as the
    /// reader goes; for reading whole images. Throws BadRequest when it cannot.
    void ReadAllPixels(const std::function<void(double)>& progress);

    /// How ReadRowsSamplesRGBA gives the samples, and the largest code of an integer
    /// image (a code k is the value k / IntegerMax()); 0 for half and float images.
    SampleKind Samples() const noexcept { return header_->samples; }
    std::uint32_t IntegerMax() const noexcept { return header_->integerMax; }
    /// Rows `y` to `y + rows - 1` (inside the image), every column, as red, green, blue,
    /// alpha samples of the chosen set of the kind Samples() says (4 x Width() x rows of
    /// them, 1, 2 or 4 bytes each) into `out`: the image kept in its own type. A grey set
    /// gives its sample to red, green and blue; a missing colour is the sample of 0, a
    /// missing alpha the one of 1. Throws BadRequest when the pixels cannot be read.
    void ReadRowsSamplesRGBA(int y, int rows, void* out) const;

    /// The header of part `part`, opening it when it is first needed.
    const ImageFileHeader& PartHeader(int part);
    /// Reads every pixel of part `part` into memory at once, as ReadAllPixels does.
    void ReadAllPartPixels(int part, const std::function<void(double)>& progress);
    /// Rows `y` to `y + rows - 1` of part `part` (inside its pixel rectangle), every column
    /// and every channel, in the part's sample kind, into `out`.
    void ReadPartRows(int part, int y, int rows, void* out);

private:
    ImageFile& Part(int part);

    std::string path_;
    /// The file's parts, opened when first needed (the first at once).
    std::vector<std::unique_ptr<ImageFile>> parts_;
    std::vector<ChannelSet> sets_;
    int set_ = 0;
    // The chosen set's part, and its header, read once when it opened.
    ImageFile* file_ = nullptr;
    const ImageFileHeader* header_ = nullptr;
    // The channel values and pixels of a row (or of one pixel), and the samples of a band of
    // rows, their storage kept from one read to the next.
    mutable std::vector<float> values_;
    mutable std::vector<std::byte> samples_;
    mutable std::vector<PixelARGB> pixels_;
    /// The colour transform of PixelsAt, none when null, and its red, green, blue, alpha
    /// floats of a row.
    std::shared_ptr<const ColourTransform> transform_;
    mutable std::vector<float> rgba_;
};

/// Picks red, green, blue and alpha of `set` out of `pixels` pixels of `channels` samples
/// of kind `kind` each (codes up to `integer_max`) into `out`, 4 samples a pixel: a grey set
/// gives its sample to red, green and blue, a missing colour is the sample of 0 and a
/// missing alpha the one of 1.
void PickSamplesRGBA(const ChannelSet& set, int channels, SampleKind kind,
                     std::uint32_t integer_max, const void* in, std::size_t pixels, void* out);

} // namespace qzhost::pixelview
