#include "InfoPal/panel/InfoPal_UI.h"

#include <boost/bind/bind.hpp>

#include "InfoPal/controls/UI_SwatchRect.h"
#include "InfoPal/frame/InfoPal.h"
#include "InfoPal/frame/TabVisibility.h"
#include "InfoPal/panel/ControlCreators.h"
#include "host/COakApp.h"
#include "host/U_Utility.h"
#include "kitcore/threads/MainThreadQueue.h"

namespace infopal {

namespace {

using kitcore::utility::UTF16String;
using kitui::controls::UI_Divider;
using kitui::controls::UI_StaticText;
using kitui::ui::RectT;

constexpr const char* kLayoutNameKey = "$$$/QZ/Plugin/InfoPal/layout_file_name=control_layout";
constexpr const char* kLayoutTypeKey = "$$$/QZ/Plugin/InfoPal/layout_file_type=xml";

// Theme colour of text rows whose message asks for attention.
constexpr std::size_t kAlertColorID = 10076;

// The pixel display mode whose labels are hue, saturation and brightness.
constexpr std::uint16_t kModeHSB = 7;

// The width of the horizontal divider is the panel's less this margin.
constexpr float kDividerMargin = 13.0f;

struct ControlPlan {
    enum Kind { Divider, Image, Text, Swatch } kind;
    float width;
    float height;
    const char* label; // localised key of a label's text, or null
    bool visible;
};

// The 23 controls by layout number: what each is, the size asked at creation, the label
// key of the labels and whether it is visible at start.
constexpr ControlPlan kControls[control::kCount] = {
    {ControlPlan::Divider, 195, 2, nullptr, true},
    {ControlPlan::Divider, 2, 50, nullptr, true},
    {ControlPlan::Image, 17, 17, nullptr, true},
    {ControlPlan::Text, 15, 14, "$$$/QZ/Plugin/InfoPal/RGBAText1Red=R :", true},
    {ControlPlan::Text, 15, 14, "$$$/QZ/Plugin/InfoPal/RGBAText2Green=G :", true},
    {ControlPlan::Text, 15, 14, "$$$/QZ/Plugin/InfoPal/RGBAText3Blue=B :", true},
    {ControlPlan::Text, 15, 14, "$$$/QZ/Plugin/InfoPal/RGBAText4=A :", true},
    {ControlPlan::Text, 90, 14, nullptr, true},
    {ControlPlan::Text, 90, 14, nullptr, true},
    {ControlPlan::Text, 90, 14, nullptr, true},
    {ControlPlan::Text, 90, 14, nullptr, true},
    {ControlPlan::Text, 15, 14, "$$$/QZ/Plugin/InfoPal/XYText1=X :", true},
    {ControlPlan::Text, 15, 14, "$$$/QZ/Plugin/InfoPal/XYText2=Y :", true},
    {ControlPlan::Text, 15, 14, "$$$/QZ/Plugin/InfoPal/XPrimeYPrimeText1=X' :", false},
    {ControlPlan::Text, 15, 14, "$$$/QZ/Plugin/InfoPal/XPrimeYPrimeText2=Y' :", false},
    {ControlPlan::Text, 90, 14, nullptr, true},
    {ControlPlan::Text, 90, 14, nullptr, true},
    {ControlPlan::Text, 90, 14, nullptr, false},
    {ControlPlan::Text, 90, 14, nullptr, false},
    {ControlPlan::Swatch, 0, 0, nullptr, true},
    {ControlPlan::Text, 190, 14, nullptr, true},
    {ControlPlan::Text, 190, 14, nullptr, true},
    {ControlPlan::Text, 190, 14, nullptr, true},
};

// The HSB labels of the first three channel rows.
constexpr const char* kHSBLabels[3] = {
    "$$$/QZ/Plugin/InfoPal/RGBAText1Hue=H :", "$$$/QZ/Plugin/InfoPal/RGBAText2Saturation=S :",
    "$$$/QZ/Plugin/InfoPal/RGBAText3Brightness=B :"};

} // namespace

InfoPal_UI::InfoPal_UI(kitui::ui::UI_Node* parent,
                       const kitworkspace::workspace::TabPanelCreationArgs* args,
                       const UTF16String& title, std::uint32_t options, bool)
    : QZGPPaletteUI(InfoPal::GetPlugin(), kInfoTabType, parent, args, title, options) {
    InfoPal* plugin = Owner();
    if (plugin != nullptr) {
        plugin->SetPanel(this);
        plugin->SetFlag(false);
    }
    try {
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
    // The plug-in object may be gone already (a hidden panel outlives the death hook):
    // ask for the current one rather than trusting the owner pointer.
    if (InfoPal* plugin = InfoPal::GetPlugin(); plugin != nullptr && plugin->GetPanel() == this) {
        plugin->SetPanel(nullptr);
    }
}

void InfoPal_UI::CreateControls() {
    kitui::controls::UI_ControlsContainer* container = GetControlsContainer(0);
    for (std::size_t number = 0; number < control::kCount; ++number) {
        const ControlPlan& plan = kControls[number];
        std::unique_ptr<kitui::ui::UI_Node> node;
        switch (plan.kind) {
        case ControlPlan::Divider:
            node = CreateDivider();
            break;
        case ControlPlan::Image:
            node = CreateStaticImage();
            break;
        case ControlPlan::Text: {
            auto text = CreateStaticText();
            if (plan.label != nullptr) {
                text->SetValue(ControlLabelText(number, UTF16String()));
            }
            node = std::move(text);
            break;
        }
        case ControlPlan::Swatch:
            node = std::make_unique<kitui::controls::UI_SwatchRect>();
            break;
        }
        if (plan.width > 0) {
            node->UI_SetBounds(RectT<float>{0, 0, plan.width, plan.height});
        }
        node->UI_Show(plan.visible);
        container->UI_AddChild(std::move(node));
    }
}

UTF16String InfoPal_UI::ControlLabelText(std::size_t number, const UTF16String& fallback) const {
    if (number < control::kChannelLabel1 || number > control::kYPrimeLabel ||
        (number >= control::kChannelValue1 && number < control::kXLabel)) {
        return fallback;
    }
    if (mode_ == kModeHSB && number < control::kChannelLabel1 + 3) {
        return U_ZStringToUTF16String(kHSBLabels[number - control::kChannelLabel1]);
    }
    return U_ZStringToUTF16String(kControls[number].label);
}

void InfoPal_UI::ArrangeControls(const RectT<float>& rect) {
    if (rect.width <= 0 || rect.height <= 0) {
        return;
    }
    const float width = UI_GetLocalRectF().width;
    for (std::size_t number = control::kTextLine1; number < control::kTextLine1 + 3; ++number) {
        auto& row = GetControl<UI_StaticText>(number);
        RectT<float> bounds = row.UI_GetBounds();
        bounds.width = width;
        row.UI_SetBounds(bounds);
    }
    auto& divider = GetControl<UI_Divider>(control::kHorizontalDivider);
    RectT<float> bounds = divider.UI_GetBounds();
    bounds.width = width - kDividerMargin;
    divider.UI_SetBounds(bounds);
}

void InfoPal_UI::UI_LocalRectChanged(const RectT<float>& local) {
    // The controls exist once construction has created them; a resize before that (the
    // base sizing itself) has nothing to arrange.
    if (UI_GetChildCount() > 0 && GetControlsContainer(0)->UI_GetChildCount() == control::kCount) {
        ArrangeControls(local);
    }
    QZGPPaletteUI::UI_LocalRectChanged(local);
}

bool InfoPal_UI::IsVisibleForUpdates() const {
    return IsTabShown(kInfoTabType, true);
}

void InfoPal_UI::UI_NodeChanged(const kitui::ui::NodeChange& change) {
    if (change.kind == kitui::ui::NodeChange::kBecameVisible && UI_IsVisible() &&
        IsVisibleForUpdates()) {
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
    if (!IsVisibleForUpdates()) {
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
    if (!IsVisibleForUpdates()) {
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
        auto& row = GetControl<UI_StaticText>(number);
        row.SetValue(UTF16String());
        row.UI_Invalidate();
    }
}

void InfoPal_UI::SetTextRow(std::size_t number, const UTF16String& text, bool alert) {
    auto& row = GetControl<UI_StaticText>(number);
    if (alert) {
        row.SetTextColor(kAlertColorID);
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

void InfoPal_UI::UpdatePixelInfo(const PF_PixelFloat* pixel, const M_Vector2T<double>* position,
                                 const M_Vector2T<double>* origin) {
    if (!U_IsOnUIThread()) {
        (void)kitcore::threads::AsyncCallFromMainThread(
            boost::bind(&InfoPal_UI::UpdatePixelInfo, this, pixel, position, origin), 0);
        return;
    }
    if (position != nullptr) {
        position_ = *position;
    }
    origin_ = origin != nullptr ? *origin : M_Vector2T<double>{0, 0};
    if (pixel != nullptr) {
        pixel_ = *pixel;
    }
    displayState_ = DisplayState::PixelReadout;
}

} // namespace infopal
