// How a surface sets a line of text.
#pragma once

namespace kitui::inkwell {

struct TextStyle {
    enum Alignment : int { kLeft = 0, kCenter = 1, kRight = 2 };
    /// Font size in user units (the em height).
    float size = 11.0f;
    int alignment = kLeft;
    bool bold = false;
    bool underline = false;
};

} // namespace kitui::inkwell
