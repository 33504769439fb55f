// A drawing context on an image in memory: a Cairo image surface of whole pixels, with
// user units scaled by a factor (the host's UI scale), a supplier and a surface of the
// toolkit's drawing library, and a Pango text setter.
#pragma once

#include <memory>

#include "kitui/inkwell/Inkwell.h"
#include "kitui/ui/UI_Node.h"
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

    /// [ui-thread] Draws `root` again inside the pixel rectangle `x`, `y`, `width`,
    /// `height` only (clipped to the image): that rectangle is cleared to transparent and
    /// the tree drawn clipped to it, the rest of the image is left as it is.
    void RedrawArea(kitui::ui::UI_Node& root, int x, int y, int width, int height);

    /// [ui-thread] The image's pixels as drawn so far: rows of PixelWidth() 32-bit
    /// values 0xAARRGGBB in native byte order with premultiplied colour, `Stride()` bytes
    /// apart. Valid until the canvas is destroyed.
    const unsigned char* Data() const;
    int Stride() const noexcept;

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace qzhost
