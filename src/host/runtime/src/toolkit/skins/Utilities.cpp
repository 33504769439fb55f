#include "kitui/skins/core/Utilities.h"

#include "kitui/ui/Theme.h"

namespace kitui::skins::core::utilities {

std::size_t GetContentBackgroundColorID() {
    return kitui::ui::color_id::kContentBackground;
}

} // namespace kitui::skins::core::utilities
