#include "kitui/controls/UI_ControlMessage.h"
#include "kitui/controls/UI_PictureSupplyMessage.h"

namespace kitui::controls {

UI_ControlMessage::UI_ControlMessage(kitui::ui::UI_Node* control, std::int32_t kind)
    : control_(control), kind_(kind) {}

UI_ControlMessage::~UI_ControlMessage() = default;

UI_PictureSupplyMessage::UI_PictureSupplyMessage(kitui::ui::UI_Node* control,
                                                 std::uint32_t state_flags,
                                                 kitui::inkwell::SupplierInterface* supplier,
                                                 float scale)
    : UI_ControlMessage(control, kPictureSupply), stateFlags_(state_flags), supplier_(supplier),
      scale_(scale) {}

UI_PictureSupplyMessage::~UI_PictureSupplyMessage() = default;

} // namespace kitui::controls
