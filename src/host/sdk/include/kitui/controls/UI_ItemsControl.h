// The base of controls that offer a list of texts to choose from; the chosen item's text
// is the control's text.
#pragma once

#include <cstddef>
#include <vector>

#include "kitui/controls/UI_TextControl.h"

namespace kitui::controls {

/// [ui-thread] for every operation.
class QZ_HOST_API UI_ItemsControl : public UI_TextControl {
public:
    static constexpr std::size_t kNoSelection = static_cast<std::size_t>(-1);

    explicit UI_ItemsControl(std::uint32_t creation_flags = 0);
    ~UI_ItemsControl() override;

    void AddItem(const kitcore::utility::UTF16String& text);
    void RemoveAllItems();
    std::size_t GetItemCount() const noexcept { return items_.size(); }
    /// The text of item `index` (empty for an index out of range).
    kitcore::utility::UTF16String GetItem(std::size_t index) const;
    /// Chooses item `index`; kNoSelection or an index out of range chooses none.
    void SetSelection(std::size_t index);
    std::size_t GetSelection() const noexcept { return selection_; }

private:
    std::vector<kitcore::utility::UTF16String> items_;
    std::size_t selection_ = kNoSelection;
};

} // namespace kitui::controls
