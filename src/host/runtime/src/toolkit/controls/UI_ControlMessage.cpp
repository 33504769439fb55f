// The message that a control sends to its owner: the control and the kind of message.
#include "kitui/controls/UI_ControlMessage.h"

namespace kitui::controls {

UI_ControlMessage::UI_ControlMessage(kitui::ui::UI_Node* control, std::int32_t kind)
    : control_(control), kind_(kind) {}

UI_ControlMessage::~UI_ControlMessage() = default;

} // namespace kitui::controls
