// The host's dark theme: every colour of the user interface, by number, in one table.
#include "kitui/ui/Theme.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace kitui::ui {

namespace {

struct ThemeColor {
    std::size_t id;
    std::uint8_t r;
    std::uint8_t g;
    std::uint8_t b;
};

constexpr std::array<ThemeColor, 11> kThemeColors{{
    {color_id::kContentBackground, 0x23, 0x23, 0x23}, // dark grey
    {color_id::kDefaultText, 0xC8, 0xC8, 0xC8},       // light grey
    {color_id::kDivider, 0x50, 0x50, 0x50},
    {color_id::kControlFrame, 0x5A, 0x5A, 0x5A},
    {color_id::kControlFace, 0x34, 0x34, 0x34},
    {color_id::kEditBackground, 0x1A, 0x1A, 0x1A},
    {color_id::kHotText, 0x4D, 0x9B, 0xF0}, // blue
    {color_id::kDisabledText, 0x6E, 0x6E, 0x6E},
    {color_id::kControlMark, 0xDC, 0xDC, 0xDC},
    {color_id::kSwatchFrame, 0x80, 0x80, 0x80}, // mid grey
    {color_id::kAlertText, 0xF0, 0x32, 0x32},   // clear red
}};

const ThemeColor* Find(std::size_t id) {
    const auto* it = std::find_if(kThemeColors.begin(), kThemeColors.end(),
                                  [id](const ThemeColor& c) { return c.id == id; });
    return it != kThemeColors.end() ? it : nullptr;
}

} // namespace

kitui::inkwell::ColorRGBA GetColor(std::size_t id) {
    const ThemeColor* color = Find(id);
    if (color == nullptr) {
        color = Find(color_id::kDefaultText);
    }
    return {color->r / 255.0f, color->g / 255.0f, color->b / 255.0f, 1.0f};
}

bool HasColor(std::size_t id) {
    return Find(id) != nullptr;
}

} // namespace kitui::ui
