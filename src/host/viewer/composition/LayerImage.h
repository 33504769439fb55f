// An image read for the viewer's composition, kept in its own type: every pixel of one
// channel set as red, green, blue and alpha samples of 8 or 16 bits (integer codes), half
// floats or floats, with what the host says about the file. The working values that the
// Info palette is given are made from the samples when they are asked for: a code k is
// k / the largest code (rounded once), half and full floats are their values, and a set
// without alpha has alpha 1; with a colour config, these file values then go from the
// image's input colour space into the config's working space.
//
// The image has a frame (the file's display window) in whose coordinates it is placed;
// its pixels lie at their own rectangle in that frame (inside it, around it or beside it),
// and outside them the image is transparent. A file whose channels make several sets keeps
// all of them, so that another set is shown without reading the file again.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include <memory>

#include "pixelview/ChannelSets.h"
#include "pixelview/ImageFile.h"
#include "qzhost/ColourTransform.h"

namespace qzview {

using SampleKind = qzhost::pixelview::SampleKind;
using ChannelSet = qzhost::pixelview::ChannelSet;

/// Every channel of every part of a file whose channels make several sets.
struct ImageChannels {
    struct Part {
        /// Where the part's pixel 0,0 lies in the image's frame, and its size.
        int dataX = 0;
        int dataY = 0;
        int width = 0;
        int height = 0;
        int channels = 0;
        SampleKind samples = SampleKind::Float;
        std::uint32_t integerMax = 0;
        std::int8_t depth = 0;
        std::string channelType;
        /// width x height x channels samples, rows top to bottom.
        std::vector<std::byte> pixels;
    };
    std::vector<Part> parts;
    std::vector<ChannelSet> sets;
};

struct LayerImage {
    std::string path;
    /// The file's name without its folder.
    std::string name;
    /// The reader's format name and the channel type ("png", "8-bit").
    std::string format;
    std::string channelType;
    /// The pixels: width x height of them, their 0,0 at dataX, dataY of the frame.
    int width = 0;
    int height = 0;
    int dataX = 0;
    int dataY = 0;
    /// The frame that the image is placed by: columns 0 to frameWidth - 1, rows 0 to
    /// frameHeight - 1.
    int frameWidth = 0;
    int frameHeight = 0;
    /// The channel set that the pixels hold: its name and place in Sets().
    std::string setName;
    int set = 0;
    /// Every channel of the file when they make several sets; null when there is one.
    std::shared_ptr<const ImageChannels> channels;
    /// How many times wider than tall a pixel is meant to be shown (1: square pixels).
    double pixelAspect = 1.0;
    /// The project depth that the file's format gives (0 8-bit, 1 16-bit, 2 float).
    std::int8_t depth = 0;
    SampleKind samples = SampleKind::Float;
    /// The largest code of an integer image; 0 for half and float images.
    std::uint32_t integerMax = 0;
    /// width x height x 4 samples, rows top to bottom; shared by the images that differ
    /// only in their colour space.
    std::shared_ptr<const std::vector<std::byte>> pixels;
    /// The colour space that the file's values are in, a name of the colour config, and
    /// the transform from it into the working space; empty and null without a config.
    std::string colourSpace;
    std::shared_ptr<const qzhost::ColourTransform> toWorking;

    /// New pixels of `bytes` bytes (zeros) for the image to hold, to be filled.
    std::byte* NewPixels(std::size_t bytes);

    /// The bytes of one sample.
    std::size_t SampleBytes() const noexcept;
    /// The names of the channel sets that the image can show, in their order.
    std::vector<std::string> SetNames() const;
    /// The working values of columns `x0` to `x1 - 1` of row `y` (all inside the image)
    /// into `out`, four floats per pixel.
    void WorkingRow(int y, int x0, int x1, float* out) const noexcept;
    /// The working values of the pixel at column `x`, row `y` (inside the image).
    std::array<float, 4> WorkingPixel(int x, int y) const noexcept;
};

/// An image of `width` x `height` float pixels (red, green, blue, alpha, rows top to
/// bottom) filling its frame, for images that the viewer makes itself.
LayerImage FloatImage(std::string name, int width, int height, const std::vector<float>& rgba);

/// `image` showing its channel set `set` (an index of SetNames()); the same image when it
/// already does. Throws std::out_of_range for a set that the image does not have.
LayerImage WithChannelSet(const LayerImage& image, int set);

/// `image` with its file values in the colour space `space`, which `to_working` turns into
/// working values (null: they are working values); the pixels are shared, not copied.
LayerImage WithColourSpace(const LayerImage& image, std::string space,
                           std::shared_ptr<const qzhost::ColourTransform> to_working);

/// Reports how far a read has come, 0 to 1; it may be called on the reading thread.
using ReadProgress = std::function<void(double done)>;

/// Reads `path` with the host's image reader (any thread). Throws std::runtime_error with
/// a one-line message when the file cannot be read; `progress` (when set) is called as
/// the reader goes, ending with 1.
LayerImage ReadLayerImage(const std::string& path, const ReadProgress& progress = {});

} // namespace qzview
