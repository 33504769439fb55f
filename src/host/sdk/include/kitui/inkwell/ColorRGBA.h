// A colour of the drawing library: red, green, blue and alpha as floats in [0, 1],
// not premultiplied.
#pragma once

namespace kitui::inkwell {

struct ColorRGBA {
    float r = 0.0f;
    float g = 0.0f;
    float b = 0.0f;
    float a = 1.0f;
    friend bool operator==(const ColorRGBA&, const ColorRGBA&) = default;
};

} // namespace kitui::inkwell
