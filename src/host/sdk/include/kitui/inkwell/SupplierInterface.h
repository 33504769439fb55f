// The supplier of a drawing context: it creates the paths, pens, brushes, shaders and
// pictures that the context's surface draws. Every object comes back as a shared handle.
#pragma once

#include <cstddef>
#include <cstdint>

#include "kitui/inkwell/ColorRGBA.h"
#include "kitui/inkwell/Handles.h"
#include "kitui/ui/Geometry.h"
#include "qzgp/QZ_Basic.h"

namespace kitui::inkwell {

class QZ_HOST_API SupplierInterface {
public:
    virtual ~SupplierInterface();

    /// [ui-thread] An empty path.
    virtual PathRef NewPath() = 0;
    /// [ui-thread] A pen of `color` stroking `width` user units wide.
    virtual PenRef NewPen(const ColorRGBA& color, float width) = 0;
    /// [ui-thread] A solid brush of `color`.
    virtual BrushRef NewBrush(const ColorRGBA& color) = 0;
    /// [ui-thread] A linear shader from `start` (colour `start_color`) to `end` (colour
    /// `end_color`), in the user units of the surface that fills with it.
    virtual ShaderRef NewLinearShader(const kitui::ui::PointT<float>& start,
                                      const kitui::ui::PointT<float>& end,
                                      const ColorRGBA& start_color, const ColorRGBA& end_color) = 0;
    /// [ui-thread] A picture of `width` x `height` pixels for pixel density `scale`, made
    /// from rows of 0xAARRGGBB values (not premultiplied), `stride` values per row.
    virtual PictureRef NewPicture(int width, int height, float scale, const std::uint32_t* pixels,
                                  std::size_t stride) = 0;
    /// [ui-thread] Whether fills are to be made with shaders rather than brushes on this
    /// supplier's surfaces.
    virtual bool UseShadersForFills() const = 0;
};

} // namespace kitui::inkwell
