#include "InfoPal/panel/InfoPal_UI.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <optional>

#include <boost/bind/bind.hpp>

#include "InfoPal/controls/UI_SwatchRect.h"
#include "InfoPal/frame/InfoPal.h"
#include "InfoPal/frame/TabVisibility.h"
#include "InfoPal/panel/ControlCreators.h"
#include "InfoPal/readout/ChannelValueText.h"
#include "InfoPal/readout/ReadoutNumbers.h"
#include "host/COakApp.h"
#include "host/MonitorTransform.h"
#include "host/PREF_Preferences.h"
#include "host/U_LocalizedStrings.h"
#include "host/U_TextConversion.h"
#include "host/U_Threads.h"
#include "kitcore/threads/MainThreadQueue.h"
#include "kitcore/utility/NumberText.h"
#include "kitui/controls/UI_MessageHandler.h"
#include "kitui/utility/EDB_Image.h"

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
constexpr std::uint16_t kModeHSB = pixel_mode::kHSB;

// Where the colour notation is kept in the host's text preference file.
constexpr const char* kPrefSection = "Misc Section";
constexpr const char* kPrefKey = "Info Palette Pixel Display";

// What the application redraws after the notation changed.
constexpr short kRefreshAfterModeChange = -32766; // 0x8002

// The crosshair picture of control 2.
constexpr const char* kCrosshairPicture = "InfoCrosshairs_Sm";

struct FlyoutItem {
    const char* text; // localised key
    std::int32_t command;
    PixelDisplayMode mode;
};

// The flyout menu, top to bottom. The commands follow the menu; the modes do not.
constexpr FlyoutItem kFlyoutItems[] = {
    {"$$$/QZ/Plugin/InfoPal/AutoColorDisplay=Auto Color Display", 50, pixel_mode::kAuto},
    {"$$$/QZ/Plugin/InfoPal/Percent=Percent", 51, pixel_mode::kPercent},
    {"$$$/QZ/Plugin/InfoPal/Web=Web", 52, pixel_mode::kWeb},
    {"$$$/QZ/Plugin/InfoPal/Hsb=HSB", 53, pixel_mode::kHSB},
    {"$$$/QZ/Plugin/InfoPal/8bpc=8-bpc (0-255)", 54, pixel_mode::kBpc8},
    {"$$$/QZ/Plugin/InfoPal/10bpc=10-bpc (0-1023)", 55, pixel_mode::kBpc10},
    {"$$$/QZ/Plugin/InfoPal/16bpc=16-bpc (0-32768)", 56, pixel_mode::kBpc16},
    {"$$$/QZ/Plugin/InfoPal/Decimal=Decimal (0.0-1.0)", 57, pixel_mode::kDecimal},
};

void ThrowIfError(QZ_Err err) {
    if (err != QZ_Err_NONE) {
        throw err;
    }
}

// The notation kept in the preference file, or none when the key is absent. Errors are
// thrown as their integer codes.
std::optional<PixelDisplayMode> StoredPixelDisplayMode(PREF_Handle prefs) {
    bool exists = false;
    ThrowIfError(PREF_DoesKeyExist(prefs, kPrefSection, kPrefKey, &exists));
    if (!exists) {
        return std::nullopt;
    }
    long value = 0;
    ThrowIfError(PREF_GetTextPrefLong(prefs, kPrefSection, kPrefKey, 0, &value));
    // Kept as it is, without a range check: the low 16 bits.
    return static_cast<PixelDisplayMode>(static_cast<unsigned long>(value) & 0xFFFFUL);
}

// A colour channel as the swatch can show it: 0 to 1 (NaN shows as 0).
float SwatchChannel(float value) {
    if (!(value > 0.0f)) {
        return 0.0f;
    }
    return value < 1.0f ? value : 1.0f;
}

// "Not the same" for the change tests of the refresh: NaN is never the same.
bool Differs(const PF_PixelFloat& a, const PF_PixelFloat& b) {
    return a.alpha != b.alpha || a.red != b.red || a.green != b.green || a.blue != b.blue;
}
bool Differs(const M_Vector2T<double>& a, const M_Vector2T<double>& b) {
    return a.x != b.x || a.y != b.y;
}

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
        serial_ = plugin->SetPanel(this);
        plugin->SetFlag(false);
    }
    try {
        if (const auto stored = StoredPixelDisplayMode(PREF_GetPrefHandle(PREF_TYPE_TEXT))) {
            mode_ = *stored;
            previousMode_ = *stored;
        }
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

void InfoPal_UI::CreateControls() {
    kitui::controls::UI_ControlsContainer* container = GetControlsContainer(0);
    for (std::size_t number = 0; number < control::kCount; ++number) {
        const ControlPlan& plan = kControls[number];
        std::unique_ptr<kitui::ui::UI_Node> node;
        switch (plan.kind) {
        case ControlPlan::Divider:
            node = CreateDivider();
            break;
        case ControlPlan::Image: {
            auto image = CreateStaticImage();
            image->SetPictureSupplyHandler(
                kitui::controls::UI_MakeMessageHandler<kitui::controls::UI_PictureSupplyMessage>(
                    boost::bind(&InfoPal_UI::SupplyCrosshairPicture, this,
                                boost::placeholders::_1)));
            image->SetControlMessageHandler(
                kitui::controls::UI_MakeMessageHandler<kitui::controls::UI_ControlMessage>(
                    boost::bind(&InfoPal_UI::HandleControlMessage, this, boost::placeholders::_1)));
            node = std::move(image);
            break;
        }
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
    const PixelDelivery delivery = PixelDelivery::Copy(pixel, position, origin);
    if (!U_IsOnUIThread()) {
        // Only values travel: the caller's records and this panel may be gone by the time
        // the main thread runs the call, which then finds out whether the panel is still
        // the registered one.
        PostPixelDelivery(serial_, delivery);
        return;
    }
    UpdatePixelInfo(delivery);
}

void InfoPal_UI::UpdatePixelInfo(const PixelDelivery& delivery) {
    if (!IsVisibleForUpdates()) {
        // Only the latest delivery waits for the panel to be shown again.
        pendingPixel_ = boost::bind(&InfoPal_UI::ApplyPixelDelivery, this, delivery);
        return;
    }
    ApplyPixelDelivery(delivery);
}

void InfoPal_UI::ApplyPixelDelivery(const PixelDelivery& delivery) {
    if (delivery.hasPosition) {
        position_ = delivery.position;
    }
    origin_ = delivery.hasOrigin ? delivery.origin : M_Vector2T<double>{0, 0};
    if (delivery.hasPixel) {
        pixel_ = delivery.pixel;
    }
    displayState_ = DisplayState::PixelReadout;
    RefreshPixelReadout();
}

void InfoPal_UI::RefreshPixelReadout() {
    for (std::size_t number = control::kChannelLabel1; number < control::kChannelLabel1 + 4;
         ++number) {
        auto& label = GetControl<UI_StaticText>(number);
        label.SetValue(ControlLabelText(number, UTF16String()));
        label.UI_Invalidate();
    }
    UpdateSwatch();
    if (mode_ != previousMode_ || Differs(pixel_, previousPixel_)) {
        previousMode_ = mode_;
    }
    UpdateColorValues(*this, channelText_);
    previousPixel_ = pixel_;
    UpdatePositionValues();
    UpdateOriginValues();
    previousPosition_ = position_;
    previousOrigin_ = origin_;
}

void InfoPal_UI::UpdateSwatch() {
    auto& swatch = GetControl<kitui::controls::UI_SwatchRect>(control::kSwatch);
    const kitui::ui::PointT<int> corner = swatch.UI_LocalToGlobal(kitui::ui::PointT<int>{0, 0});
    PF_PixelFloat shown = pixel_;
    TransformPixelAtScreenLocation(pixel_, corner.x, corner.y, &shown);
    // The swatch is opaque whatever the pixel's alpha, and shows the nearest colour that
    // it can for over-range and negative channels.
    swatch.color = kitui::inkwell::ColorRGBA{SwatchChannel(shown.red), SwatchChannel(shown.green),
                                             SwatchChannel(shown.blue), 1.0f};
    swatch.UI_Invalidate();
}

kitui::controls::UI_StaticText& InfoPal_UI::SetNumberField(std::size_t number, std::int32_t value) {
    char digits[16] = {};
    std::snprintf(digits, sizeof digits, "%d", static_cast<int>(value));
    numberText_.assign(digits, digits + std::strlen(digits));
    auto& field = GetControl<UI_StaticText>(number);
    field.SetValue(numberText_);
    field.UI_Invalidate();
    return field;
}

void InfoPal_UI::UpdatePositionValues() {
    SetNumberField(control::kXValue, TruncateToInt32(std::floor(position_.x)));
    SetNumberField(control::kYValue, TruncateToInt32(std::floor(position_.y)));
}

void InfoPal_UI::UpdateOriginValues() {
    const bool changed = Differs(origin_, previousOrigin_);
    if (changed) {
        for (std::size_t number : {control::kXPrimeValue, control::kYPrimeValue}) {
            auto& field = GetControl<UI_StaticText>(number);
            field.SetValue(UTF16String());
            field.UI_Show(false);
            field.UI_Invalidate();
        }
    }
    const bool no_origin = origin_.x == 0.0 && origin_.y == 0.0;
    if (no_origin) {
        if (changed) {
            for (std::size_t number : {control::kXPrimeLabel, control::kYPrimeLabel}) {
                auto& label = GetControl<UI_StaticText>(number);
                label.UI_Show(false);
                label.UI_Invalidate();
            }
        }
        return;
    }
    for (std::size_t number : {control::kXPrimeLabel, control::kYPrimeLabel}) {
        auto& label = GetControl<UI_StaticText>(number);
        label.UI_Show(true);
        label.UI_Invalidate();
    }
    // The floor of the difference, not the difference of the floors.
    // The field found for its text is the one shown: one lookup each.
    SetNumberField(control::kXPrimeValue, TruncateToInt32(std::floor(position_.x - origin_.x)))
        .UI_Show(true);
    SetNumberField(control::kYPrimeValue, TruncateToInt32(std::floor(position_.y - origin_.y)))
        .UI_Show(true);
}

void InfoPal_UI::PopulateFlyoutMenu(kitworkspace::workspace::FlyoutMenu& menu) {
    menu.RemoveItems(0);
    for (const FlyoutItem& item : kFlyoutItems) {
        const std::size_t position = menu.AppendItem(U_ZStringToUTF16String(item.text));
        menu.SetItemCommand(position, item.command);
        if (item.mode == mode_) {
            menu.SetItemChecked(position, true);
        }
    }
}

bool InfoPal_UI::DoFlyoutMenuCommand(std::int32_t command) {
    for (const FlyoutItem& item : kFlyoutItems) {
        if (item.command == command) {
            SetPixelDisplayMode(item.mode);
            return true;
        }
    }
    return false;
}

void InfoPal_UI::SetPixelDisplayMode(PixelDisplayMode mode) {
    PREF_Handle prefs = PREF_GetPrefHandle(PREF_TYPE_TEXT);
    const PixelDisplayMode stored = StoredPixelDisplayMode(prefs).value_or(pixel_mode::kStored);
    const PixelDisplayMode chosen = mode == pixel_mode::kStored ? stored : mode;
    previousMode_ = mode_;
    mode_ = chosen;
    // Blank colour fields until the next pixel arrives.
    pixel_ = PF_PixelFloat{0, 0, 0, 0};
    // Written sign-extended: 65535 is kept as -1 and reads back as 65535.
    const long value = static_cast<std::int16_t>(chosen);
    ThrowIfError(PREF_SetTextPrefLong(prefs, kPrefSection, kPrefKey, value));
    if (gOak != nullptr) {
        gOak->RefreshWindows(kRefreshAfterModeChange);
    }
    RefreshPixelReadout();
}

std::size_t InfoPal_UI::ControlNumberOf(const kitui::controls::UI_ControlMessage& message) const {
    const auto* sender = dynamic_cast<const kitui::controls::UI_ControlView*>(message.GetControl());
    if (sender == nullptr) {
        ThrowInvalidTypeConversion();
    }
    const kitui::controls::UI_ControlsContainer* container = GetControlsContainer(0);
    for (std::size_t number = 0; number < container->UI_GetChildCount(); ++number) {
        if (container->UI_GetChild(number) == sender) {
            return number;
        }
    }
    return control::kCount;
}

void InfoPal_UI::SupplyCrosshairPicture(kitui::controls::UI_PictureSupplyMessage& message) {
    if (ControlNumberOf(message) != control::kCrosshair) {
        return;
    }
    const InfoPal* plugin = InfoPal::GetPlugin();
    message.SetImage(EDB_GetImage(plugin != nullptr ? plugin->GetResourceManager() : nullptr,
                                  message.GetDrawSupplier(), kCrosshairPicture,
                                  message.GetStateFlags(),
                                  kitui::utility::image_file_type::kPNGOrSVG, true, true, nullptr));
}

void InfoPal_UI::HandleControlMessage(kitui::controls::UI_ControlMessage& message) {
    // A picture request that reaches the general handler is answered the same way.
    if (auto* supply = dynamic_cast<kitui::controls::UI_PictureSupplyMessage*>(&message)) {
        SupplyCrosshairPicture(*supply);
    }
}

} // namespace infopal
