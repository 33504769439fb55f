#include "kitui/ui/OS_Window.h"

#include "qzhost/HostControls.h"

namespace kitui::ui {

OS_Window::OS_Window() = default;
OS_Window::~OS_Window() = default;

// The reference host draws a window only when a snapshot asks for it, so there is
// nothing to bring to a screen: the request is recorded for the contract checks.
void OS_Window::UI_UpdateImmediately(int) {
    ++immediateUpdates_;
}

OS_ScaledView::OS_ScaledView() = default;
OS_ScaledView::~OS_ScaledView() = default;

double OS_ScaledView::UI_GetScale() const {
    return qzhost::HostControls::Get().UIScale();
}

} // namespace kitui::ui
