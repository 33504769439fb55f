#include "kitui/controls/UI_Divider.h"

#include <algorithm>
#include <cmath>

#include "kitui/inkwell/Drawing.h"
#include "kitui/ui/Theme.h"

namespace kitui::controls {

UI_Divider::UI_Divider(std::uint32_t creation_flags) : UI_ControlView(creation_flags) {}

UI_Divider::~UI_Divider() = default;

float UI_Divider::GetLineThickness() const {
    const kitui::ui::RectT<float> local = UI_GetLocalRectF();
    return std::min(local.width, local.height) >= 2.0f ? 2.0f : 1.0f;
}

void UI_Divider::UI_Draw(kitui::inkwell::Inkwell* ink) {
    const kitui::ui::RectT<float> local = UI_GetLocalRectF();
    if (ink != nullptr && local.width > 0.0f && local.height > 0.0f) {
        // The line runs along the long side, centred across the short side on whole units.
        const float thickness = GetLineThickness();
        kitui::ui::RectT<float> line = local;
        if (local.width >= local.height) {
            line.y = std::floor((local.height - thickness) / 2.0f);
            line.height = thickness;
        } else {
            line.x = std::floor((local.width - thickness) / 2.0f);
            line.width = thickness;
        }
        kitui::inkwell::FillRect(*ink, line, kitui::ui::GetColor(kitui::ui::color_id::kDivider));
    }
    UI_DrawChildren(ink);
}

} // namespace kitui::controls
