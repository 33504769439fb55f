// The menu behind a panel's tab. The workspace builds it afresh each time the user opens
// it: it asks the panel to populate it, and hands the chosen item's command back to the
// panel.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "kitcore/utility/UTF16String.h"
#include "qzgp/QZ_Basic.h"

namespace kitworkspace::workspace {

class QZ_HOST_API FlyoutMenu {
public:
    struct Item {
        kitcore::utility::UTF16String text;
        std::int32_t command = 0;
        bool checked = false;
        bool enabled = true;
    };

    FlyoutMenu();
    ~FlyoutMenu();

    /// [ui-thread] Removes the items from position `first` (0 is the first item) on.
    void RemoveItems(std::size_t first);
    /// [ui-thread] Appends an enabled, unchecked item with command 0; returns its position.
    std::size_t AppendItem(const kitcore::utility::UTF16String& text);
    /// [ui-thread] The command that choosing the item at `position` sends to the panel.
    /// Positions past the end are ignored, as in the two setters below.
    void SetItemCommand(std::size_t position, std::int32_t command);
    /// [ui-thread] Puts or removes the check mark of the item at `position`.
    void SetItemChecked(std::size_t position, bool checked);
    /// [ui-thread] Enables or disables the item at `position`.
    void SetItemEnabled(std::size_t position, bool enabled);

    /// [ui-thread] The items, first to last.
    const std::vector<Item>& GetItems() const noexcept { return items_; }

private:
    std::vector<Item> items_;
};

} // namespace kitworkspace::workspace
