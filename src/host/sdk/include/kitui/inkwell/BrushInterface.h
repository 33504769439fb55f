// A brush of the drawing library: a solid colour with which a path is filled.
#pragma once

#include "kitui/inkwell/ColorRGBA.h"
#include "qzgp/QZ_Basic.h"

namespace kitui::inkwell {

class QZ_HOST_API BrushInterface {
public:
    virtual ~BrushInterface();
    /// [ui-thread] The colour that the brush fills with.
    virtual ColorRGBA GetColor() const = 0;
};

} // namespace kitui::inkwell
