// A picture of the drawing library: a bitmap made for one pixel density. A picture of
// scale 2 has twice as many pixels across as the user units that it covers.
#pragma once

#include <cstdint>

#include "qzgp/QZ_Basic.h"

namespace kitui::inkwell {

class QZ_HOST_API PictureInterface {
public:
    virtual ~PictureInterface();
    /// [ui-thread] Size in pixels.
    virtual int GetPixelWidth() const = 0;
    virtual int GetPixelHeight() const = 0;
    /// [ui-thread] Pixels per user unit (1, 1.5, 2...).
    virtual float GetScale() const = 0;
    /// [ui-thread] Size in user units: the pixel size divided by the scale.
    float GetWidth() const { return static_cast<float>(GetPixelWidth()) / GetScale(); }
    float GetHeight() const { return static_cast<float>(GetPixelHeight()) / GetScale(); }
    /// [ui-thread] The pixel at column x, row y as 0xAARRGGBB, not premultiplied.
    virtual std::uint32_t GetPixel(int x, int y) const = 0;
};

} // namespace kitui::inkwell
