// Native window classes of the UI toolkit: a window, a view with a UI scale factor.
#pragma once

#include "kitui/ui/UI_Node.h"

namespace kitui::ui {

class QZ_HOST_API OS_Window : public UI_Node {
public:
    OS_Window();
    ~OS_Window() override;
};

class QZ_HOST_API OS_ScaledView : public OS_Window {
public:
    OS_ScaledView();
    ~OS_ScaledView() override;
    /// QZ_UI_THREAD The host's UI scale factor for this view (1 on a standard display).
    double UI_GetScale() const;
};

} // namespace kitui::ui
