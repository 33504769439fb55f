#include "kitui/ui/UI_SubView.h"

namespace kitui::ui {

UI_SubView::UI_SubView() = default;
UI_SubView::~UI_SubView() = default;

} // namespace kitui::ui
