// The base of controls that show a text: the text in UTF-16 and its colour, a theme
// colour or the control's default.
#pragma once

#include <cstddef>
#include <optional>

#include "kitcore/utility/UTF16String.h"
#include "kitui/controls/UI_ControlView.h"
#include "kitui/inkwell/ColorRGBA.h"
#include "kitui/inkwell/TextStyle.h"

namespace kitui::controls {

/// [ui-thread] for every operation.
class QZ_HOST_API UI_TextControl : public UI_ControlView {
public:
    explicit UI_TextControl(std::uint32_t creation_flags = 0);
    ~UI_TextControl() override;

    /// Sets the text; a null pointer empties it. Marks the control for redrawing when the
    /// text changes.
    void SetValue(const char16_t* text);
    void SetValue(const kitcore::utility::UTF16String& text);
    const kitcore::utility::UTF16String& GetValue() const noexcept { return text_; }

    /// Shows the text in the theme colour `color_id` (kitui::ui::GetColor).
    void SetTextColor(std::size_t color_id);
    /// Shows the text in the control's default colour again.
    void ResetTextColor();
    /// Whether the text has the control's default colour.
    bool HasDefaultTextColor() const noexcept { return !textColorID_.has_value(); }
    /// The theme colour set with SetTextColor; none when the colour is the default.
    std::optional<std::size_t> GetTextColorID() const noexcept { return textColorID_; }
    /// The colour in which the text is drawn.
    kitui::inkwell::ColorRGBA GetEffectiveTextColor() const;

    /// kitui::inkwell::TextStyle::kLeft, kCenter or kRight.
    void SetTextAlignment(int alignment);
    int GetTextAlignment() const noexcept { return alignment_; }

protected:
    /// The theme colour of the text when none is set.
    virtual std::size_t DefaultTextColorID() const;
    /// The style in which the control sets its text.
    kitui::inkwell::TextStyle GetTextStyle() const;
    /// Called after the text changed, before the control is marked for redrawing.
    virtual void TextChanged();

private:
    kitcore::utility::UTF16String text_;
    std::optional<std::size_t> textColorID_;
    int alignment_;
};

} // namespace kitui::controls
