// A pen of the drawing library: the colour and width with which a path is stroked.
#pragma once

#include "kitui/inkwell/ColorRGBA.h"
#include "qzgp/QZ_Basic.h"

namespace kitui::inkwell {

class QZ_HOST_API PenInterface {
public:
    virtual ~PenInterface();
    /// [ui-thread] The colour that the pen strokes with.
    virtual ColorRGBA GetColor() const = 0;
    /// [ui-thread] The width of the stroke in user units.
    virtual float GetWidth() const = 0;
};

} // namespace kitui::inkwell
