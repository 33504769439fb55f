// A rule between groups of controls: a line one or two units thick along the long side
// of its rectangle, in the theme's divider colour.
#pragma once

#include "kitui/controls/UI_ControlView.h"

namespace kitui::controls {

/// [ui-thread] for every operation.
class QZ_HOST_API UI_Divider : public UI_ControlView {
public:
    explicit UI_Divider(std::uint32_t creation_flags = 0);
    ~UI_Divider() override;

    /// The thickness of the drawn line: 2 when the short side has room for it, else 1.
    float GetLineThickness() const;

    void UI_Draw(kitui::inkwell::Inkwell* ink) override;
};

} // namespace kitui::controls
