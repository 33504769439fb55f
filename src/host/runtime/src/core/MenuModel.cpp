#include "qzhost/MenuModel.h"

#include <algorithm>

namespace qzhost {

MenuModel& MenuModel::Get() {
    static MenuModel model;
    return model;
}

void MenuModel::Reset() {
    items_.clear();
    nextCommand_ = 10000;
}

std::int32_t MenuModel::NewCommand() {
    while (FindItem(nextCommand_) != nullptr) {
        ++nextCommand_;
    }
    return nextCommand_++;
}

MenuItem* MenuModel::FindItem(std::int32_t command) {
    auto it = std::find_if(items_.begin(), items_.end(),
                           [command](const MenuItem& item) { return item.command == command; });
    return it == items_.end() ? nullptr : &*it;
}

std::optional<MenuItem> MenuModel::Find(std::int32_t command) const {
    auto it = std::find_if(items_.begin(), items_.end(),
                           [command](const MenuItem& item) { return item.command == command; });
    if (it == items_.end()) {
        return std::nullopt;
    }
    return *it;
}

QZ_Err MenuModel::Insert(std::int32_t command, const std::string& text, std::int32_t menu,
                         std::int32_t position) {
    if (FindItem(command) != nullptr) {
        return QZ_Err_GENERIC;
    }
    // A new command starts enabled and unchecked, as a host menu item does.
    items_.push_back(MenuItem{command, text, menu, position, true, false});
    return QZ_Err_NONE;
}

QZ_Err MenuModel::Remove(std::int32_t command) {
    auto it = std::find_if(items_.begin(), items_.end(),
                           [command](const MenuItem& item) { return item.command == command; });
    if (it == items_.end()) {
        return QZ_Err_UNKNOWN;
    }
    items_.erase(it);
    return QZ_Err_NONE;
}

QZ_Err MenuModel::SetText(std::int32_t command, const std::string& text) {
    MenuItem* item = FindItem(command);
    if (item == nullptr) {
        return QZ_Err_UNKNOWN;
    }
    item->text = text;
    return QZ_Err_NONE;
}

QZ_Err MenuModel::SetEnabled(std::int32_t command, bool enabled) {
    MenuItem* item = FindItem(command);
    if (item == nullptr) {
        return QZ_Err_UNKNOWN;
    }
    item->enabled = enabled;
    return QZ_Err_NONE;
}

QZ_Err MenuModel::SetChecked(std::int32_t command, bool checked) {
    MenuItem* item = FindItem(command);
    if (item == nullptr) {
        return QZ_Err_UNKNOWN;
    }
    item->checked = checked;
    return QZ_Err_NONE;
}

} // namespace qzhost
