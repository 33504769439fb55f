// A transform of colours that the host applies to pixels: a layer's input colour space to
// the working space, or the working space to what a display shows.
#pragma once

#include <cstddef>

#include "qzgp/QZ_Basic.h"

namespace qzhost {

class QZ_HOST_API ColourTransform {
public:
    virtual ~ColourTransform();

    /// [any-thread] Transforms `count` pixels of red, green, blue and alpha floats in place;
    /// alpha passes unchanged.
    virtual void Apply(float* rgba, std::size_t count) const noexcept = 0;
    /// [any-thread] Whether Apply leaves every colour as it is.
    virtual bool Identity() const noexcept { return false; }
};

} // namespace qzhost
