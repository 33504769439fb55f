// The base of a docked palette's user interface: a tab panel of the docking workspace that
// holds one controls container, loads a control layout from the library's resources into
// it, and keeps the smallest size that fits every layout it loaded.
#pragma once

#include <optional>

#include "kitcore/config/Error.h"
#include "kitui/controls/UI_ControlsContainer.h"
#include "kitui/utility/ResourceManager.h"
#include "kitworkspace/workspace/TabPanel.h"

namespace infopal {

class InfoPal;

/// The toolkit's error for a control of another class than the one asked for.
inline constexpr const char* kInvalidTypeConversionKey =
    "$$$/kitcore/utility/Error/InvalidTypeConversion=Invalid type conversion.";
[[noreturn]] void ThrowInvalidTypeConversion();

class QZGPPaletteUI : public kitworkspace::workspace::TabPanel {
public:
    /// Builds the tab panel and its controls container, sized to the panel's local
    /// rectangle and added as the panel's first child.
    QZGPPaletteUI(InfoPal* owner, const char* tab_type, kitui::ui::UI_Node* parent,
                  const kitworkspace::workspace::TabPanelCreationArgs* args,
                  const kitcore::utility::UTF16String& title, std::uint32_t options);
    ~QZGPPaletteUI() override;

    InfoPal* Owner() const noexcept { return owner_; }

    /// [ui-thread] Child `index` as a controls container; another kind of child raises
    /// the toolkit's type-conversion error.
    kitui::controls::UI_ControlsContainer* GetControlsContainer(std::size_t index) const;

    /// [ui-thread] Places the controls of `container` (container 0 when null) by the
    /// layout resource `name` of `type`, sizes the container to the layout, widens the
    /// minimum layout size and returns the layout's size. Without a resource manager
    /// nothing happens and the size is 0 by 0.
    kitui::ui::PointT<float> LoadLayout(const kitui::utility::ResourceManager* resources,
                                        const kitcore::utility::UTF16String& name,
                                        const kitcore::utility::UTF16String& type,
                                        kitui::controls::UI_ControlsContainer* container);

    /// [ui-thread] The minimum layout size times the scale of the first control view,
    /// each rounded to the nearest whole number, halves up; none without a control view.
    std::optional<kitui::ui::PointT<float>> GetMinimumSize() const;
    kitui::ui::PointT<float> GetMinimumLayoutSize() const noexcept { return minLayoutSize_; }

    /// [ui-thread] Control `number` of container 0, of class `Control`; a missing control
    /// or one of another class raises the toolkit's type-conversion error.
    template <class Control>
    Control& GetControl(std::size_t number) const {
        auto* control = dynamic_cast<Control*>(GetControlsContainer(0)->UI_GetChild(number));
        if (control == nullptr) {
            ThrowInvalidTypeConversion();
        }
        return *control;
    }

    /// Shows or hides the panel; a panel that has just become visible hears of it.
    void UI_Show(bool show) override;
    /// The controls container takes the panel's new size.
    void UI_LocalRectChanged(const kitui::ui::RectT<float>& local) override;
    /// Fills the content background, then draws the children.
    void UI_Draw(kitui::inkwell::Inkwell* ink) override;

protected:
    /// Called when the panel has just become visible through UI_Show.
    virtual void BecameVisible();

private:
    InfoPal* owner_;
    kitui::ui::PointT<float> minLayoutSize_{0.0f, 0.0f};
};

} // namespace infopal
