// OpenEXR files that tests write: parts of half floats with named channels, their pixels at
// a rectangle of their own in a frame (the display window), every sample a number that
// says where it lies, so that a test knows what a reader must give without reading the
// file back (the file keeps its channels in an order of its own).
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include <Imath/half.h>
#include <OpenImageIO/imageio.h>

namespace qztest {

/// One part of a test file.
struct ExrPart {
    std::vector<std::string> channels;
    /// The pixels: width x height of them from x0, y0.
    int x0 = 0;
    int y0 = 0;
    int width = 0;
    int height = 0;
    /// The frame: frameWidth x frameHeight from frameX, frameY.
    int frameX = 0;
    int frameY = 0;
    int frameWidth = 0;
    int frameHeight = 0;
    /// The part's name; none when empty.
    std::string name;
};

/// A part of `channels` whose pixels fill a frame of `width` x `height` at 0,0.
inline ExrPart FilledPart(std::vector<std::string> channels, int width, int height) {
    return {std::move(channels), 0, 0, width, height, 0, 0, width, height, {}};
}

/// The sample of channel `channel` (its place in ExrPart::channels) of pixel `x`, `y` of
/// part `part`, as the file keeps it: x + 10 y + channel / 4 + part, as a half float.
inline float ExrSample(int x, int y, int channel, int part = 0) {
    return static_cast<float>(Imath::half(static_cast<float>(x + 10 * y + 0.25 * channel + part)));
}

/// The sample of the channel named `name` of pixel `x`, `y` of `part`, the file's part
/// `index`; -1 when the part has no such channel.
inline float ExrSample(const ExrPart& part, int x, int y, const std::string& name, int index = 0) {
    const auto found = std::find(part.channels.begin(), part.channels.end(), name);
    return found == part.channels.end()
               ? -1.0f
               : ExrSample(x, y, static_cast<int>(found - part.channels.begin()), index);
}

/// Writes `parts` to `path` as one OpenEXR file (several parts: a multi-part file); the
/// reason when it cannot, else empty.
inline std::string WriteExr(const std::string& path, const std::vector<ExrPart>& parts) {
    std::vector<OIIO::ImageSpec> headers;
    for (const ExrPart& part : parts) {
        OIIO::ImageSpec header(part.width, part.height, static_cast<int>(part.channels.size()),
                               OIIO::TypeDesc::HALF);
        header.x = part.x0;
        header.y = part.y0;
        header.full_x = part.frameX;
        header.full_y = part.frameY;
        header.full_width = part.frameWidth;
        header.full_height = part.frameHeight;
        header.channelnames = part.channels;
        const auto alpha = std::find(part.channels.begin(), part.channels.end(), "A");
        header.alpha_channel =
            alpha == part.channels.end() ? -1 : static_cast<int>(alpha - part.channels.begin());
        if (!part.name.empty()) {
            header.attribute("oiio:subimagename", part.name);
        }
        headers.push_back(header);
    }
    auto out = OIIO::ImageOutput::create(path);
    if (!out) {
        return OIIO::geterror();
    }
    if (!out->open(path, static_cast<int>(headers.size()), headers.data())) {
        return out->geterror();
    }
    for (std::size_t p = 0; p < parts.size(); ++p) {
        const ExrPart& part = parts[p];
        if (p > 0 && !out->open(path, headers[p], OIIO::ImageOutput::AppendSubimage)) {
            return out->geterror();
        }
        std::vector<float> samples;
        for (int y = part.y0; y < part.y0 + part.height; ++y) {
            for (int x = part.x0; x < part.x0 + part.width; ++x) {
                for (int c = 0; c < static_cast<int>(part.channels.size()); ++c) {
                    samples.push_back(ExrSample(x, y, c, static_cast<int>(p)));
                }
            }
        }
        if (!out->write_image(OIIO::TypeDesc::FLOAT, samples.data())) {
            return out->geterror();
        }
    }
    return out->close() ? std::string() : out->geterror();
}

} // namespace qztest
