// A view inside a window: the base of every control and control container.
#pragma once

#include "kitui/ui/UI_Node.h"

namespace kitui::ui {

class QZ_HOST_API UI_SubView : public UI_Node {
public:
    UI_SubView();
    ~UI_SubView() override;
};

} // namespace kitui::ui
