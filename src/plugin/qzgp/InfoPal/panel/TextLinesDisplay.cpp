// The text-lines display: five stored lines shown in the panel's three text rows, laid
// out by the text-lines type, with the one-shot first-line suffix and the alert colours.
#include "InfoPal/panel/InfoPal_UI.h"

#include <algorithm>

#include <boost/bind/bind.hpp>

#include "InfoPal/frame/InfoPal.h"
#include "host/COakApp.h"
#include "host/U_TextConversion.h"
#include "kitui/ui/Theme.h"

namespace infopal {

namespace {

using kitcore::utility::UTF16String;
using kitui::controls::UI_StaticText;

} // namespace

void InfoPal_UI::SetFirstLineSuffix(const char* text) {
    if (text == nullptr) {
        suffixPending_ = false;
    } else if (!suffixPending_) {
        suffixPending_ = true;
        suffix_ = U_MBToUTF16String(text);
    }
}

void InfoPal_UI::ShowTextLines(const UTF16String& line1, const UTF16String& line2,
                               const UTF16String& line3, const UTF16String& line4,
                               const UTF16String& line5, TextLinesType type) {
    if (!InfoPal::PanelIsShown()) {
        // Only the latest update waits for the panel to be shown again.
        pendingText_ =
            boost::bind(&InfoPal_UI::ShowTextLines, this, line1, line2, line3, line4, line5, type);
        return;
    }
    const TextLinesType old_type = type_;
    type_ = type;
    if (type != old_type) {
        ChangeTextLinesType();
    }

    UTF16String first = line1;
    if (suffixPending_) {
        first += suffix_;
        suffixPending_ = false;
        suffix_.clear();
    }
    const UTF16String* incoming[5] = {&first, &line2, &line3, &line4, &line5};
    bool changed = false;
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        if (incoming[i]->empty()) {
            lines_[i].clear();
            changed = true; // an empty line always counts as a change
        } else if (*incoming[i] != lines_[i]) {
            lines_[i] = *incoming[i];
            changed = true;
        }
    }

    const bool any_text =
        std::any_of(lines_.begin(), lines_.end(), [](const UTF16String& l) { return !l.empty(); });
    if (any_text) {
        if (InfoPal* plugin = InfoPal::GetPlugin()) {
            plugin->SetFlag(!plugin->GetFlag());
        }
    }
    cachedReadout_ = -1.0;
    if (displayState_ != DisplayState::TextLines) {
        displayState_ = DisplayState::TextLines;
        RedrawTextLines();
    } else if (changed || type != old_type) {
        RedrawTextLines();
    }
}

void InfoPal_UI::ChangeTextLinesType() {
    if (!InfoPal::PanelIsShown()) {
        return;
    }
    suffixPending_ = false;
    suffix_.clear();
    for (UTF16String& line : lines_) {
        line.clear();
    }
    cachedReadout_ = -1.0;
    displayState_ = DisplayState::TextLines;
    for (std::size_t number = control::kTextLine1; number < control::kTextLine1 + 3; ++number) {
        auto& row = TextControl(number);
        row.SetValue(UTF16String());
        row.UI_Invalidate();
    }
}

void InfoPal_UI::SetTextRow(std::size_t number, const UTF16String& text, bool alert) {
    auto& row = TextControl(number);
    if (alert) {
        row.SetTextColor(kitui::ui::color_id::kAlertText);
    } else {
        row.ResetTextColor();
    }
    row.SetValue(text);
    row.UI_Invalidate();
    row.UI_Refresh();
}

void InfoPal_UI::RedrawTextLines() {
    if (gOak != nullptr && gOak->IsUpdateSuppressed()) {
        return;
    }
    const UTF16String space(1, u' ');
    switch (type_) {
    case TextLinesType::Three:
        SetTextRow(control::kTextLine1, lines_[0], G_msg1_redB != 0);
        SetTextRow(control::kTextLine1 + 1, lines_[1], G_msg2_redB != 0);
        SetTextRow(control::kTextLine1 + 2, lines_[2], G_msg3_redB != 0);
        break;
    case TextLinesType::Five: {
        SetTextRow(control::kTextLine1, lines_[0], G_msg1_redB != 0);
        SetTextRow(control::kTextLine1 + 1, lines_[1] + space + lines_[2],
                   G_msg2_redB != 0 && G_msg3_redB != 0);
        UTF16String last = lines_[3] + space + lines_[4];
        // Line 4 is indented to stand under the value of line 2.
        const auto len2 = static_cast<std::int32_t>(lines_[1].size());
        const auto len4 = static_cast<std::int32_t>(lines_[3].size());
        if (len2 > len4) {
            last.insert(0, static_cast<std::size_t>(len2 - len4 + 1), u' ');
        }
        SetTextRow(control::kTextLine1 + 2, last, G_msg3_redB != 0 && G_msg4_redB != 0);
        break;
    }
    default:
        break; // an unknown layout draws nothing and keeps the stored lines
    }
}

} // namespace infopal
