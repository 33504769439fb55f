// A picture that the user cannot change, centred in the control; its owner supplies it
// through picture-supply messages.
#pragma once

#include "kitui/controls/UI_PictureControl.h"

namespace kitui::controls {

/// [ui-thread] for every operation.
class QZ_HOST_API UI_StaticImage : public UI_PictureControl {
public:
    explicit UI_StaticImage(std::uint32_t creation_flags = 0);
    ~UI_StaticImage() override;

    void UI_Draw(kitui::inkwell::Inkwell* ink) override;
};

} // namespace kitui::controls
