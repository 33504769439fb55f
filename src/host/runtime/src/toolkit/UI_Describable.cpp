#include "kitui/ui/UI_Describable.h"

namespace kitui::ui {

UI_Description::~UI_Description() = default;
UI_Describable::~UI_Describable() = default;

} // namespace kitui::ui
