// The host's menus as the Command suite builds them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "qzgp/QZ_Basic.h"

namespace qzhost {

struct MenuItem {
    std::int32_t command = 0;
    std::string text;
    std::int32_t menu = 0;
    std::int32_t position = 0;
    bool enabled = false;
    bool checked = false;
};

class QZ_HOST_API MenuModel {
public:
    static MenuModel& Get();
    void Reset();

    /// A command number that no inserted or handed-out command uses.
    std::int32_t NewCommand();
    /// Inserts a command; an already inserted number is refused with QZ_Err_GENERIC.
    QZ_Err Insert(std::int32_t command, const std::string& text, std::int32_t menu,
                  std::int32_t position);
    QZ_Err Remove(std::int32_t command);
    QZ_Err SetText(std::int32_t command, const std::string& text);
    QZ_Err SetEnabled(std::int32_t command, bool enabled);
    QZ_Err SetChecked(std::int32_t command, bool checked);

    /// Every inserted command, in order of insertion.
    const std::vector<MenuItem>& Items() const noexcept { return items_; }
    std::optional<MenuItem> Find(std::int32_t command) const;

private:
    MenuModel() = default;
    MenuItem* FindItem(std::int32_t command);
    std::vector<MenuItem> items_;
    std::int32_t nextCommand_ = 10000;
};

} // namespace qzhost
