#include "InfoPal/panel/QZGPPaletteUI.h"

#include <cmath>
#include <string>

#include "kitui/inkwell/Drawing.h"
#include "kitui/skins/core/Utilities.h"
#include "kitui/ui/Theme.h"

namespace infopal {

using kitui::controls::UI_ControlsContainer;
using kitui::ui::PointT;
using kitui::ui::RectT;

void ThrowInvalidTypeConversion() {
    kitcore::config::ThrowError(1, kInvalidTypeConversionKey, 105, 21, true);
}

QZGPPaletteUI::QZGPPaletteUI(InfoPal* owner, const char* tab_type, kitui::ui::UI_Node* parent,
                             const kitworkspace::workspace::TabPanelCreationArgs* args,
                             const kitcore::utility::UTF16String& title, std::uint32_t options)
    : TabPanel(tab_type, parent, args, title, options), owner_(owner) {
    auto container = std::make_unique<UI_ControlsContainer>(GetCreationFlags());
    container->UI_SetBounds(UI_GetLocalRectF());
    UI_AddChild(std::move(container));
}

QZGPPaletteUI::~QZGPPaletteUI() = default;

UI_ControlsContainer* QZGPPaletteUI::GetControlsContainer(std::size_t index) const {
    auto* container = dynamic_cast<UI_ControlsContainer*>(UI_GetChild(index));
    if (container == nullptr) {
        ThrowInvalidTypeConversion();
    }
    return container;
}

PointT<float> QZGPPaletteUI::LoadLayout(const kitui::utility::ResourceManager* resources,
                                        const kitcore::utility::UTF16String& name,
                                        const kitcore::utility::UTF16String& type,
                                        UI_ControlsContainer* container) {
    if (resources == nullptr) {
        return {0.0f, 0.0f};
    }
    if (container == nullptr) {
        container = GetControlsContainer(0);
    }
    std::vector<std::uint8_t> bytes;
    (void)resources->GetResourceBytes(name, type, bytes);
    const std::string document(bytes.begin(), bytes.end());
    const PointT<float> size = container->RestoreLayout(document);
    container->UI_SetBounds(RectT<float>{0.0f, 0.0f, size.x, size.y});
    minLayoutSize_.x = std::max(minLayoutSize_.x, size.x);
    minLayoutSize_.y = std::max(minLayoutSize_.y, size.y);
    return size;
}

std::optional<PointT<float>> QZGPPaletteUI::GetMinimumSize() const {
    const auto* view = dynamic_cast<const kitui::controls::UI_ControlView*>(UI_GetChild(0));
    if (view == nullptr) {
        return std::nullopt;
    }
    const PointT<double> scale = view->UI_GetScale();
    const auto round_half_up = [](double v) { return static_cast<float>(std::floor(v + 0.5)); };
    return PointT<float>{round_half_up(minLayoutSize_.x * scale.x),
                         round_half_up(minLayoutSize_.y * scale.y)};
}

void QZGPPaletteUI::UI_Show(bool show) {
    const bool was_visible = UI_IsVisible();
    TabPanel::UI_Show(show);
    if (!was_visible && UI_IsVisible()) {
        BecameVisible();
    }
}

void QZGPPaletteUI::BecameVisible() {}

void QZGPPaletteUI::UI_LocalRectChanged(const RectT<float>& local) {
    if (local.width > 0 && local.height > 0 && UI_GetChildCount() > 0) {
        GetControlsContainer(0)->UI_SetBounds(local);
    }
    TabPanel::UI_LocalRectChanged(local);
}

void QZGPPaletteUI::UI_Draw(kitui::inkwell::Inkwell* ink) {
    if (ink != nullptr) {
        const std::size_t background = kitui::skins::core::utilities::GetContentBackgroundColorID();
        kitui::inkwell::FillRect(*ink, UI_GetLocalRectF(), kitui::ui::GetColor(background));
    }
    UI_DrawChildren(ink);
}

} // namespace infopal
