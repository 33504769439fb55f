// The image that `qzhost inspect` looks into, read by the image reader module: its size, the
// project depth that its format gives, and the colour of one pixel as the host's viewer
// hands it to the Info palette.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "pixelview/ImageFile.h"

namespace qzhost::pixelview {

/// The colour of one pixel: alpha, red, green, blue, as the Info palette suite takes it.
using PixelARGB = std::array<float, 4>;

class PixelViewImage {
public:
    /// Opens `path` (the first subimage, its full-resolution level) and reads its header;
    /// pixels are read when asked for. Throws BadRequest when the file is missing or
    /// cannot be read, when no reader knows its format, or when it holds no colour, and
    /// HostFailed when the image reader module cannot be loaded.
    explicit PixelViewImage(const std::string& path);
    ~PixelViewImage();
    PixelViewImage(const PixelViewImage&) = delete;
    PixelViewImage& operator=(const PixelViewImage&) = delete;

    const std::string& Path() const noexcept { return path_; }
    /// The pixel rectangle (the data window): columns x0 to x0 + width - 1, rows y0 to
    /// y0 + height - 1.
    int X0() const noexcept { return header_.x0; }
    int Y0() const noexcept { return header_.y0; }
    int Width() const noexcept { return header_.width; }
    int Height() const noexcept { return header_.height; }
    /// The display window: the frame that the image is meant to be seen in.
    int DisplayX() const noexcept { return header_.displayX; }
    int DisplayY() const noexcept { return header_.displayY; }
    int DisplayWidth() const noexcept { return header_.displayWidth; }
    int DisplayHeight() const noexcept { return header_.displayHeight; }
    /// How many times wider than tall a pixel is meant to be shown.
    double PixelAspect() const noexcept { return header_.pixelAspect; }
    bool Contains(int x, int y) const noexcept {
        return x >= header_.x0 && y >= header_.y0 && x - header_.x0 < header_.width &&
               y - header_.y0 < header_.height;
    }

    /// The project depth that the image's format gives: 0 for 8-bit integers, 1 for
    /// integers of 9 to 16 bits, 2 for half and float (and wider integers).
    std::int8_t ProjectDepth() const noexcept { return header_.depth; }
    /// The reader's name for the format ("openexr", "png", "tiff"...).
    const std::string& FormatName() const noexcept { return header_.formatName; }
    /// The channel type in words: "8-bit", "16-bit", "10-bit", "half float", "float"...
    const std::string& ChannelType() const noexcept { return header_.channelType; }
    /// The channel names, comma-separated ("R,G,B,A").
    const std::string& ChannelNames() const noexcept { return header_.channelNames; }
    bool HasAlpha() const noexcept { return header_.alpha >= 0; }

    /// The pixel at column `x`, row `y` (inside the image): the channel values as floats
    /// (unsigned integers scaled to 0-1: a code k of n bits is k / (2^n - 1), rounded
    /// once to the nearest float), grey images giving the same value to red, green
    /// and blue, alpha 1 when the image has none. Values are the file's own: alpha that
    /// the file keeps unassociated is not multiplied in. Throws BadRequest when the
    /// pixels cannot be read.
    PixelARGB PixelAt(int x, int y) const;

    /// Reads every pixel of the image into memory at once (rather than a band at a time
    /// through the image cache), calling `progress` with the share done (0 to 1) as the
    /// reader goes; for reading whole images. Throws BadRequest when it cannot.
    void ReadAllPixels(const std::function<void(double)>& progress);

    /// How ReadRowsSamplesRGBA gives the samples, and the largest code of an integer
    /// image (a code k is the value k / IntegerMax()); 0 for half and float images.
    SampleKind Samples() const noexcept { return header_.samples; }
    std::uint32_t IntegerMax() const noexcept { return header_.integerMax; }
    /// Rows `y` to `y + rows - 1` (inside the image), every column, as red, green, blue,
    /// alpha samples of the kind Samples() says (4 x Width() x rows of them, 1, 2 or 4
    /// bytes each) into `out`: the image kept in its own type. Grey images give their
    /// sample to red, green and blue; without alpha the alpha sample is the one of 1.
    /// Throws BadRequest when the pixels cannot be read.
    void ReadRowsSamplesRGBA(int y, int rows, void* out) const;

private:
    std::string path_;
    std::unique_ptr<ImageFile> file_;
    const ImageFileHeader& header_; // the file's own, read once when it opened
    // The channel values of one pixel, their storage kept from one pixel to the next.
    mutable std::vector<float> values_;
};

} // namespace qzhost::pixelview
