#include "kitworkspace/workspace/FlyoutMenu.h"

#include "qzhost/HostControls.h"

namespace kitworkspace::workspace {

FlyoutMenu::FlyoutMenu() = default;
FlyoutMenu::~FlyoutMenu() = default;

void FlyoutMenu::RemoveItems(std::size_t first) {
    qzhost::RequireUIThread("FlyoutMenu::RemoveItems");
    if (first < items_.size()) {
        items_.resize(first);
    }
}

std::size_t FlyoutMenu::AppendItem(const kitcore::utility::UTF16String& text) {
    qzhost::RequireUIThread("FlyoutMenu::AppendItem");
    items_.push_back(Item{text, 0, false, true});
    return items_.size() - 1;
}

void FlyoutMenu::SetItemCommand(std::size_t position, std::int32_t command) {
    qzhost::RequireUIThread("FlyoutMenu::SetItemCommand");
    if (position < items_.size()) {
        items_[position].command = command;
    }
}

void FlyoutMenu::SetItemChecked(std::size_t position, bool checked) {
    qzhost::RequireUIThread("FlyoutMenu::SetItemChecked");
    if (position < items_.size()) {
        items_[position].checked = checked;
    }
}

void FlyoutMenu::SetItemEnabled(std::size_t position, bool enabled) {
    qzhost::RequireUIThread("FlyoutMenu::SetItemEnabled");
    if (position < items_.size()) {
        items_[position].enabled = enabled;
    }
}

} // namespace kitworkspace::workspace
