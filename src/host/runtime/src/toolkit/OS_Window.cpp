#include "kitui/ui/OS_Window.h"

#include "qzhost/HostControls.h"

namespace kitui::ui {

OS_Window::OS_Window() = default;
OS_Window::~OS_Window() = default;

OS_ScaledView::OS_ScaledView() = default;
OS_ScaledView::~OS_ScaledView() = default;

double OS_ScaledView::UI_GetScale() const { return qzhost::HostControls::Get().UIScale(); }

} // namespace kitui::ui
