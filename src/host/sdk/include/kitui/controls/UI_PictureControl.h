// The base of controls that show a picture. The control does not own a picture source:
// when it needs its picture (at its first drawing, and again after its state, its pixel
// density or a flush changed what it needs) it sends a UI_PictureSupplyMessage to the
// picture-supply handler that its owner installed, or, without one, to its control
// message handler, and keeps the picture that comes back.
#pragma once

#include <cstdint>

#include "kitui/controls/UI_ControlView.h"
#include "kitui/controls/UI_PictureSupplyMessage.h"
#include "kitui/inkwell/Inkwell.h"

namespace kitui::controls {

using UI_PictureSupplyHandlerRef = boost::shared_ptr<UI_MessageHandler<UI_PictureSupplyMessage>>;

/// [ui-thread] for every operation.
class QZ_HOST_API UI_PictureControl : public UI_ControlView {
public:
    explicit UI_PictureControl(std::uint32_t creation_flags = 0);
    ~UI_PictureControl() override;

    /// Installs the handler that supplies the control's pictures (an empty handle
    /// removes it). The control asks again at its next drawing.
    void SetPictureSupplyHandler(const UI_PictureSupplyHandlerRef& handler);
    const UI_PictureSupplyHandlerRef& GetPictureSupplyHandler() const noexcept {
        return supplyHandler_;
    }

    /// The state flags (picture_state) for which the picture is asked.
    void SetPictureState(std::uint32_t state_flags);
    std::uint32_t GetPictureState() const noexcept { return state_; }

    /// Forgets the kept picture, so that the next drawing asks for it again.
    void UI_FlushPicture();
    /// The kept picture (empty before the first request or after a flush).
    const kitui::inkwell::PictureRef& GetPicture() const noexcept { return picture_; }
    /// Asks the owner for the picture now, with `supplier` for pixel density `scale`,
    /// keeps the answer and returns it.
    kitui::inkwell::PictureRef UI_RequestPicture(kitui::inkwell::SupplierInterface* supplier,
                                                 float scale);
    /// How many picture requests the control has sent.
    std::uint64_t GetPictureRequestCount() const noexcept { return requests_; }

protected:
    /// The kept picture for drawing on `ink`, asked for when it is missing or was made for
    /// another state or pixel density.
    kitui::inkwell::PictureRef PictureForDrawing(kitui::inkwell::Inkwell* ink);
    /// Draws the picture centred in `box`.
    void DrawPictureCentred(kitui::inkwell::Inkwell* ink, const kitui::ui::RectT<float>& box);

private:
    UI_PictureSupplyHandlerRef supplyHandler_;
    std::uint32_t state_ = picture_state::kNormal;
    kitui::inkwell::PictureRef picture_;
    bool asked_ = false;
    std::uint32_t askedState_ = 0;
    float askedScale_ = 0.0f;
    std::uint64_t requests_ = 0;
};

} // namespace kitui::controls
