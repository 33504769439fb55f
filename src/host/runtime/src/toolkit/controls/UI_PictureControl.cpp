#include "kitui/controls/UI_PictureControl.h"

#include <cmath>

namespace kitui::controls {

UI_PictureControl::UI_PictureControl(std::uint32_t creation_flags)
    : UI_ControlView(creation_flags) {}

UI_PictureControl::~UI_PictureControl() = default;

void UI_PictureControl::SetPictureSupplyHandler(const UI_PictureSupplyHandlerRef& handler) {
    supplyHandler_ = handler;
    UI_FlushPicture();
}

void UI_PictureControl::SetPictureState(std::uint32_t state_flags) {
    if (state_flags != state_) {
        state_ = state_flags;
        UI_Refresh();
    }
}

void UI_PictureControl::UI_FlushPicture() {
    picture_.reset();
    asked_ = false;
    UI_Refresh();
}

kitui::inkwell::PictureRef
UI_PictureControl::UI_RequestPicture(kitui::inkwell::SupplierInterface* supplier, float scale) {
    UI_PictureSupplyMessage message(this, state_, supplier, scale);
    ++requests_;
    // Keep the handler alive while it runs, even if it replaces itself.
    const UI_PictureSupplyHandlerRef handler = supplyHandler_;
    if (!(handler && handler->HandleMessage(message))) {
        UI_SendControlMessage(message);
    }
    picture_ = message.GetImage();
    asked_ = true;
    askedState_ = state_;
    askedScale_ = scale;
    return picture_;
}

kitui::inkwell::PictureRef UI_PictureControl::PictureForDrawing(kitui::inkwell::Inkwell* ink) {
    if (ink == nullptr || ink->GetSurface() == nullptr) {
        return picture_;
    }
    // The pixel density of the surface: the length of a user unit in device pixels.
    const kitui::inkwell::Transform t = ink->GetSurface()->GetTransform();
    const float scale = static_cast<float>(std::hypot(t.XX(), t.YX()));
    if (!asked_ || askedState_ != state_ || askedScale_ != scale) {
        UI_RequestPicture(ink->GetSupplier(), scale);
    }
    return picture_;
}

void UI_PictureControl::DrawPictureCentred(kitui::inkwell::Inkwell* ink,
                                           const kitui::ui::RectT<float>& box) {
    const kitui::inkwell::PictureRef picture = PictureForDrawing(ink);
    if (!picture || ink == nullptr || ink->GetSurface() == nullptr) {
        return;
    }
    const float x = box.x + (box.width - picture->GetWidth()) / 2.0f;
    const float y = box.y + (box.height - picture->GetHeight()) / 2.0f;
    ink->GetSurface()->DrawPicture(picture, {std::round(x), std::round(y)});
}

} // namespace kitui::controls
