#include "InfoPal/panel/InfoPal_UI.h"

#include "InfoPal/controls/UI_SwatchRect.h"
#include "InfoPal/frame/InfoPal.h"
#include "InfoPal/frame/TabVisibility.h"
#include "host/U_LocalizedStrings.h"

namespace infopal {

namespace {

using kitcore::utility::UTF16String;

constexpr const char* kLayoutNameKey = "$$$/QZ/Plugin/InfoPal/layout_file_name=control_layout";
constexpr const char* kLayoutTypeKey = "$$$/QZ/Plugin/InfoPal/layout_file_type=xml";

} // namespace

InfoPal_UI::InfoPal_UI(kitui::ui::UI_Node* parent,
                       const kitworkspace::workspace::TabPanelCreationArgs* args,
                       const UTF16String& title, std::uint32_t options, bool)
    : QZGPPaletteUI(InfoPal::GetPlugin(), kInfoTabType, parent, args, title, options) {
    InfoPal* plugin = Owner();
    if (plugin != nullptr) {
        serial_ = plugin->SetPanel(this);
        plugin->SetFlag(false);
    }
    try {
        LoadStoredPixelDisplayMode();
        CreateControls();
        (void)LoadLayout(plugin != nullptr ? plugin->GetResourceManager() : nullptr,
                         U_ZStringToUTF16String(kLayoutNameKey),
                         U_ZStringToUTF16String(kLayoutTypeKey), nullptr);
        ArrangeControls(UI_GetLocalRectF());
        GetControlsContainer(0)->UI_Show(true);
    } catch (...) {
        // A panel that fails to come up must not stay registered.
        if (plugin != nullptr && plugin->GetPanel() == this) {
            plugin->SetPanel(nullptr);
        }
        throw;
    }
}

InfoPal_UI::~InfoPal_UI() {
    // Unregistering also turns away the deliveries still queued for this panel.
    // The plug-in object may be gone already (a hidden panel outlives the death hook):
    // ask for the current one rather than trusting the owner pointer.
    if (InfoPal* plugin = InfoPal::GetPlugin(); plugin != nullptr && plugin->GetPanel() == this) {
        plugin->SetPanel(nullptr);
    }
}

void InfoPal_UI::UI_NodeChanged(const kitui::ui::NodeChange& change) {
    if (change.kind == kitui::ui::NodeChange::kBecameVisible && UI_IsVisible() &&
        InfoPal::PanelIsShown()) {
        RefreshOnShow();
    }
    QZGPPaletteUI::UI_NodeChanged(change);
}

void InfoPal_UI::RefreshOnShow() {
    boost::function<void()> text;
    text.swap(pendingText_);
    if (text) {
        text();
    }
    boost::function<void()> pixel;
    pixel.swap(pendingPixel_);
    if (pixel) {
        pixel();
    }
}

void InfoPal_UI::UI_Describe(kitui::ui::UI_Description& out) const {
    out.SetInteger("mode", mode_);
    out.SetInteger("type", static_cast<std::int64_t>(type_));
    out.SetTextList("lines", std::vector<UTF16String>(lines_.begin(), lines_.end()));
    if (const auto size = GetMinimumSize()) {
        out.SetNumber("min_width", size->x);
        out.SetNumber("min_height", size->y);
    }
    if (const InfoPal* plugin = InfoPal::GetPlugin()) {
        out.SetInteger("flag", plugin->GetFlag() ? 1 : 0);
    }
    const auto& swatch = GetControl<kitui::controls::UI_SwatchRect>(control::kSwatch);
    out.SetNumber("swatch_r", swatch.color.r);
    out.SetNumber("swatch_g", swatch.color.g);
    out.SetNumber("swatch_b", swatch.color.b);
    out.SetNumber("swatch_a", swatch.color.a);
}

} // namespace infopal
