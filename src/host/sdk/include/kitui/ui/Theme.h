// The colours of the host's user-interface theme, looked up by number. The host has one
// dark theme; its colours live in one table in the runtime.
#pragma once

#include <cstddef>

#include "kitui/inkwell/ColorRGBA.h"
#include "qzgp/QZ_Basic.h"

namespace kitui::ui {

/// Numbers of the theme colours.
namespace color_id {
/// Background of panels and their content.
inline constexpr std::size_t kContentBackground = 1;
/// Text of static texts and labels.
inline constexpr std::size_t kDefaultText = 2;
/// Rules between groups of controls.
inline constexpr std::size_t kDivider = 3;
/// Frame of boxes: buttons, edit fields, popups, check boxes.
inline constexpr std::size_t kControlFrame = 4;
/// Face of buttons and popups.
inline constexpr std::size_t kControlFace = 5;
/// Inside of edit fields.
inline constexpr std::size_t kEditBackground = 6;
/// Text that can be clicked or dragged (hot text).
inline constexpr std::size_t kHotText = 7;
/// Text of disabled controls.
inline constexpr std::size_t kDisabledText = 8;
/// Marks: check marks, slider thumbs, popup arrows.
inline constexpr std::size_t kControlMark = 9;
/// Frame of colour swatches.
inline constexpr std::size_t kSwatchFrame = 20;
/// Text that warns the user.
inline constexpr std::size_t kAlertText = 10076;
} // namespace color_id

/// [any-thread] The theme colour number `id`; a number that the theme does not have gives
/// the default text colour.
QZ_HOST_API kitui::inkwell::ColorRGBA GetColor(std::size_t id);

/// [any-thread] Whether the theme has a colour numbered `id`.
QZ_HOST_API bool HasColor(std::size_t id);

} // namespace kitui::ui
