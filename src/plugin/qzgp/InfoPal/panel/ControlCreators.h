// One creator per toolkit control class: each builds a new control of its class with the
// toolkit's creation flag 1 and hands it back as an owning pointer.
#pragma once

#include <memory>

#include "kitui/controls/UI_Checkbox.h"
#include "kitui/controls/UI_Divider.h"
#include "kitui/controls/UI_HotText.h"
#include "kitui/controls/UI_HotTextButton.h"
#include "kitui/controls/UI_HotTextNumber.h"
#include "kitui/controls/UI_NumberEdit.h"
#include "kitui/controls/UI_PictureButton.h"
#include "kitui/controls/UI_Popup.h"
#include "kitui/controls/UI_PopupListBox.h"
#include "kitui/controls/UI_Slider.h"
#include "kitui/controls/UI_StaticImage.h"
#include "kitui/controls/UI_StaticText.h"
#include "kitui/controls/UI_TextButton.h"
#include "kitui/controls/UI_TextEdit.h"

namespace infopal {

/// The creation flag of controls made for a panel's layout.
inline constexpr std::uint32_t kControlCreationFlag = 1;

template <class Control>
std::unique_ptr<Control> CreateControl() {
    return std::make_unique<Control>(kControlCreationFlag);
}

inline auto CreateCheckbox() {
    return CreateControl<kitui::controls::UI_Checkbox>();
}
inline auto CreateDivider() {
    return CreateControl<kitui::controls::UI_Divider>();
}
inline auto CreateHotText() {
    return CreateControl<kitui::controls::UI_HotText>();
}
inline auto CreateHotTextButton() {
    return CreateControl<kitui::controls::UI_HotTextButton>();
}
inline auto CreateHotTextNumber() {
    return CreateControl<kitui::controls::UI_HotTextNumber>();
}
inline auto CreateNumberEdit() {
    return CreateControl<kitui::controls::UI_NumberEdit>();
}
inline auto CreatePictureButton() {
    return CreateControl<kitui::controls::UI_PictureButton>();
}
inline auto CreatePopup() {
    return CreateControl<kitui::controls::UI_Popup>();
}
inline auto CreatePopupListBox() {
    return CreateControl<kitui::controls::UI_PopupListBox>();
}
inline auto CreateSlider() {
    return CreateControl<kitui::controls::UI_Slider>();
}
inline auto CreateStaticImage() {
    return CreateControl<kitui::controls::UI_StaticImage>();
}
inline auto CreateStaticText() {
    return CreateControl<kitui::controls::UI_StaticText>();
}
inline auto CreateTextButton() {
    return CreateControl<kitui::controls::UI_TextButton>();
}
inline auto CreateTextEdit() {
    return CreateControl<kitui::controls::UI_TextEdit>();
}

} // namespace infopal
