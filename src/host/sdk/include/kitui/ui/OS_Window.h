// Native window classes of the UI toolkit: a window, a view with a UI scale factor.
#pragma once

#include "kitui/ui/UI_Node.h"

namespace kitui::ui {

class QZ_HOST_API OS_Window : public UI_Node {
public:
    OS_Window();
    ~OS_Window() override;

    /// [ui-thread] Brings what is marked for redrawing to the screen now rather than at
    /// the host's next redraw. `request` -1 asks for everything that is marked.
    virtual void UI_UpdateImmediately(int request);
    /// How many immediate updates the window was asked for.
    std::uint64_t UI_ImmediateUpdateCount() const noexcept { return immediateUpdates_; }

private:
    std::uint64_t immediateUpdates_ = 0;
};

class QZ_HOST_API OS_ScaledView : public OS_Window {
public:
    OS_ScaledView();
    ~OS_ScaledView() override;
    /// [ui-thread] The host's UI scale factor for this view (1 on a standard display).
    double UI_GetScale() const;
};

} // namespace kitui::ui
