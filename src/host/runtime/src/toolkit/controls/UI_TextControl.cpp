#include "kitui/controls/UI_TextControl.h"

#include "kitui/ui/Theme.h"

namespace kitui::controls {

namespace {
/// Text size of the toolkit's controls: it fits rows 14 units high.
constexpr float kControlTextSize = 11.0f;
} // namespace

UI_TextControl::UI_TextControl(std::uint32_t creation_flags)
    : UI_ControlView(creation_flags), alignment_(kitui::inkwell::TextStyle::kLeft) {}

UI_TextControl::~UI_TextControl() = default;

void UI_TextControl::SetValue(const char16_t* text) {
    SetValue(text != nullptr ? kitcore::utility::UTF16String(text)
                             : kitcore::utility::UTF16String());
}

void UI_TextControl::SetValue(const kitcore::utility::UTF16String& text) {
    if (text == text_) {
        return;
    }
    text_ = text;
    TextChanged();
    UI_Refresh();
}

void UI_TextControl::SetTextColor(std::size_t color_id) {
    if (textColorID_ != color_id) {
        textColorID_ = color_id;
        UI_Refresh();
    }
}

void UI_TextControl::ResetTextColor() {
    if (textColorID_.has_value()) {
        textColorID_.reset();
        UI_Refresh();
    }
}

kitui::inkwell::ColorRGBA UI_TextControl::GetEffectiveTextColor() const {
    if (!IsEnabled()) {
        return kitui::ui::GetColor(kitui::ui::color_id::kDisabledText);
    }
    return kitui::ui::GetColor(textColorID_.value_or(DefaultTextColorID()));
}

void UI_TextControl::SetTextAlignment(int alignment) {
    if (alignment != alignment_) {
        alignment_ = alignment;
        UI_Refresh();
    }
}

std::size_t UI_TextControl::DefaultTextColorID() const {
    return kitui::ui::color_id::kDefaultText;
}

kitui::inkwell::TextStyle UI_TextControl::GetTextStyle() const {
    kitui::inkwell::TextStyle style;
    style.size = kControlTextSize;
    style.alignment = alignment_;
    return style;
}

void UI_TextControl::TextChanged() {}

} // namespace kitui::controls
