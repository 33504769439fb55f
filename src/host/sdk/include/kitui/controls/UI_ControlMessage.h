// A message that a control sends to its owner.
#pragma once

#include <cstdint>

#include "kitui/ui/UI_Node.h"

namespace kitui::controls {

class QZ_HOST_API UI_ControlMessage {
public:
    enum Kind : std::int32_t {
        /// The user changed the control's value.
        kValueChanged = 1,
        /// The user clicked the control.
        kClicked = 2,
        /// The control needs its picture (UI_PictureSupplyMessage).
        kPictureSupply = 3,
    };

    UI_ControlMessage(kitui::ui::UI_Node* control, std::int32_t kind);
    virtual ~UI_ControlMessage();
    UI_ControlMessage(const UI_ControlMessage&) = default;
    UI_ControlMessage& operator=(const UI_ControlMessage&) = default;

    /// [ui-thread] The control that sends the message.
    kitui::ui::UI_Node* GetControl() const noexcept { return control_; }
    std::int32_t GetKind() const noexcept { return kind_; }

private:
    kitui::ui::UI_Node* control_;
    std::int32_t kind_;
};

} // namespace kitui::controls
