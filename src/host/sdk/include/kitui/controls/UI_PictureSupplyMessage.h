// The message with which a picture control asks its owner for the picture to show. The
// owner makes the picture with the message's draw supplier, for the state flags and the
// pixel density of the message, and hands it back with SetImage.
#pragma once

#include <cstdint>

#include "kitui/controls/UI_ControlMessage.h"
#include "kitui/inkwell/Handles.h"
#include "kitui/inkwell/SupplierInterface.h"

namespace kitui::controls {

/// State flags of a picture request.
namespace picture_state {
inline constexpr std::uint32_t kNormal = 0;
inline constexpr std::uint32_t kSelected = 1;
inline constexpr std::uint32_t kDisabled = 2;
inline constexpr std::uint32_t kRollover = 4;
} // namespace picture_state

class QZ_HOST_API UI_PictureSupplyMessage : public UI_ControlMessage {
public:
    UI_PictureSupplyMessage(kitui::ui::UI_Node* control, std::uint32_t state_flags,
                            kitui::inkwell::SupplierInterface* supplier, float scale);
    ~UI_PictureSupplyMessage() override;

    /// [ui-thread] The state of the control whose picture is wanted (picture_state).
    std::uint32_t GetStateFlags() const noexcept { return stateFlags_; }
    /// [ui-thread] The supplier with which to make the picture.
    kitui::inkwell::SupplierInterface* GetDrawSupplier() const noexcept { return supplier_; }
    /// [ui-thread] The pixel density of the surface that will draw the picture.
    float GetScale() const noexcept { return scale_; }

    /// [ui-thread] The answer: the picture to show (an empty handle shows none).
    void SetImage(const kitui::inkwell::PictureRef& image) { image_ = image; }
    const kitui::inkwell::PictureRef& GetImage() const noexcept { return image_; }

private:
    std::uint32_t stateFlags_;
    kitui::inkwell::SupplierInterface* supplier_;
    float scale_;
    kitui::inkwell::PictureRef image_;
};

} // namespace kitui::controls
