// A shader of the drawing library: a linear colour ramp with which a path is filled.
// Along the line from the start point to the end point the colour goes from the start
// colour to the end colour; beyond either end it keeps that end's colour.
#pragma once

#include "kitui/inkwell/ColorRGBA.h"
#include "kitui/ui/Geometry.h"
#include "qzgp/QZ_Basic.h"

namespace kitui::inkwell {

class QZ_HOST_API ShaderInterface {
public:
    virtual ~ShaderInterface();
    /// [ui-thread] Where the gradient starts.
    virtual kitui::ui::PointT<float> GetStart() const = 0;
    /// [ui-thread] Where the gradient ends.
    virtual kitui::ui::PointT<float> GetEnd() const = 0;
    /// [ui-thread] The colour at the start.
    virtual ColorRGBA GetStartColor() const = 0;
    /// [ui-thread] The colour at the end.
    virtual ColorRGBA GetEndColor() const = 0;
};

} // namespace kitui::inkwell
