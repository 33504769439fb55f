// The message in which a picture control asks its owner for the picture of a state.
#include "kitui/controls/UI_PictureSupplyMessage.h"

namespace kitui::controls {

UI_PictureSupplyMessage::UI_PictureSupplyMessage(kitui::ui::UI_Node* control,
                                                 std::uint32_t state_flags,
                                                 kitui::inkwell::SupplierInterface* supplier,
                                                 float scale)
    : UI_ControlMessage(control, kPictureSupply), stateFlags_(state_flags), supplier_(supplier),
      scale_(scale) {}

UI_PictureSupplyMessage::~UI_PictureSupplyMessage() = default;

} // namespace kitui::controls
