#include "kitui/controls/UI_ItemsControl.h"

namespace kitui::controls {

UI_ItemsControl::UI_ItemsControl(std::uint32_t creation_flags) : UI_TextControl(creation_flags) {}

UI_ItemsControl::~UI_ItemsControl() = default;

void UI_ItemsControl::AddItem(const kitcore::utility::UTF16String& text) {
    items_.push_back(text);
    UI_Refresh();
}

void UI_ItemsControl::RemoveAllItems() {
    items_.clear();
    SetSelection(kNoSelection);
    UI_Refresh();
}

kitcore::utility::UTF16String UI_ItemsControl::GetItem(std::size_t index) const {
    return index < items_.size() ? items_[index] : kitcore::utility::UTF16String();
}

void UI_ItemsControl::SetSelection(std::size_t index) {
    selection_ = index < items_.size() ? index : kNoSelection;
    SetValue(GetItem(selection_));
    UI_Refresh();
}

} // namespace kitui::controls
