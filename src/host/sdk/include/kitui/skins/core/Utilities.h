// Colour choices of the toolkit's core skin.
#pragma once

#include <cstddef>

#include "qzgp/QZ_Basic.h"

namespace kitui::skins::core::utilities {

/// [any-thread] The theme colour number (for kitui::ui::GetColor) of the background of
/// panel content.
QZ_HOST_API std::size_t GetContentBackgroundColorID();

} // namespace kitui::skins::core::utilities
