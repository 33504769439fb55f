// A drawing context on an image in memory: a Cairo image surface of whole pixels, with
// user units scaled by a factor (the host's UI scale), a supplier and a surface of the
// toolkit's drawing library, and a Pango text setter.
#pragma once

#include <memory>

#include "kitui/inkwell/Inkwell.h"
#include "qzhost/RenderedImage.h"

namespace qzhost {

class QZ_HOST_API ImageCanvas {
public:
    /// A transparent image of `pixel_width` x `pixel_height` pixels whose user unit is
    /// `scale` pixels. Throws std::invalid_argument for a size below 1 or above 32767
    /// pixels, or a scale that is not above 0.
    ImageCanvas(int pixel_width, int pixel_height, double scale);
    ~ImageCanvas();
    ImageCanvas(const ImageCanvas&) = delete;
    ImageCanvas& operator=(const ImageCanvas&) = delete;

    /// [ui-thread] The drawing context on the image.
    kitui::inkwell::Inkwell& GetInkwell() noexcept;
    int PixelWidth() const noexcept;
    int PixelHeight() const noexcept;
    double Scale() const noexcept;

    /// [ui-thread] A copy of the image as drawn so far.
    RenderedImage Snapshot() const;

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace qzhost
