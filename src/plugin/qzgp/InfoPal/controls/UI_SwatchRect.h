// The colour swatch of the Info panel: a solid patch of the colour under the pointer, with
// a frame.
#pragma once

#include "kitui/controls/UI_ControlView.h"
#include "kitui/inkwell/ColorRGBA.h"
#include "kitui/inkwell/Inkwell.h"

namespace kitui::controls {

class UI_SwatchRect : public UI_ControlView {
public:
    UI_SwatchRect();
    ~UI_SwatchRect() override;

    /// The colour drawn; the panel writes it and then invalidates the control.
    kitui::inkwell::ColorRGBA color{0.0f, 0.0f, 0.0f, 1.0f};

    /// [ui-thread] Draws the swatch in its local bounds.
    void UI_Draw(kitui::inkwell::Inkwell* ink) override;
};

/// [ui-thread] Draws a swatch of colour `c` in `bounds`: two halves across the short side
/// (filled with brushes, or with shaders where the supplier asks for them), or, for a
/// swatch exactly two units across on an unmagnified surface, two one-unit strokes; then a
/// frame of theme colour 20, 2 units wide.
void DrawSwatch(const kitui::ui::RectT<float>& bounds, kitui::inkwell::Inkwell& ink,
                kitui::inkwell::ColorRGBA c);

} // namespace kitui::controls
