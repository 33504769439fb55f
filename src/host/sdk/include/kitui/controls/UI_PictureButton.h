// A push button showing a picture: a framed face with the picture centred; its owner
// supplies the picture through picture-supply messages.
#pragma once

#include "kitui/controls/UI_PictureControl.h"

namespace kitui::controls {

/// [ui-thread] for every operation.
class QZ_HOST_API UI_PictureButton : public UI_PictureControl {
public:
    explicit UI_PictureButton(std::uint32_t creation_flags = 0);
    ~UI_PictureButton() override;

    void UI_Draw(kitui::inkwell::Inkwell* ink) override;
};

} // namespace kitui::controls
