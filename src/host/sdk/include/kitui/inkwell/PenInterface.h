// A pen of the drawing library: the colour and width with which a path is stroked.
#pragma once

#include "kitui/inkwell/ColorRGBA.h"
#include "qzgp/QZ_Basic.h"

namespace kitui::inkwell {

class QZ_HOST_API PenInterface {
public:
    virtual ~PenInterface();
    /// QZ_UI_THREAD
    virtual ColorRGBA GetColor() const = 0;
    /// QZ_UI_THREAD The width of the stroke in user units.
    virtual float GetWidth() const = 0;
};

} // namespace kitui::inkwell
