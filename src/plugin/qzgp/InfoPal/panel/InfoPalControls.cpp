// The Info panel's 23 controls: what each is, how it is created and labelled, how the
// panel arranges them when it is resized, and the crosshair picture that control 2 asks
// for.
#include "InfoPal/panel/InfoPal_UI.h"

#include <boost/bind/bind.hpp>

#include "InfoPal/controls/UI_SwatchRect.h"
#include "InfoPal/frame/InfoPal.h"
#include "InfoPal/panel/ControlCreators.h"
#include "host/U_LocalizedStrings.h"
#include "kitui/controls/UI_MessageHandler.h"
#include "kitui/utility/EDB_Image.h"

namespace infopal {

namespace {

using kitcore::utility::UTF16String;
using kitui::controls::UI_Divider;
using kitui::controls::UI_StaticText;
using kitui::ui::RectT;

// The crosshair picture of control 2.
constexpr const char* kCrosshairPicture = "InfoCrosshairs_Sm";

// The width of the horizontal divider is the panel's less this margin.
constexpr float kDividerMargin = 13.0f;

// The HSB labels of the first three channel rows.
constexpr const char* kHSBLabels[3] = {
    "$$$/QZ/Plugin/InfoPal/RGBAText1Hue=H :", "$$$/QZ/Plugin/InfoPal/RGBAText2Saturation=S :",
    "$$$/QZ/Plugin/InfoPal/RGBAText3Brightness=B :"};

} // namespace

void InfoPal_UI::CreateControls() {
    kitui::controls::UI_ControlsContainer* container = GetControlsContainer(0);
    for (std::size_t number = 0; number < control::kCount; ++number) {
        const ControlPlan& plan = kControlPlan[number];
        std::unique_ptr<kitui::ui::UI_Node> node;
        switch (plan.kind) {
        case ControlKind::Divider:
            node = CreateDivider();
            break;
        case ControlKind::Image: {
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
        case ControlKind::Text: {
            auto text = CreateStaticText();
            if (plan.label != nullptr) {
                text->SetValue(ControlLabelText(number, UTF16String()));
            }
            node = std::move(text);
            break;
        }
        case ControlKind::Swatch:
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
    if (mode_ == pixel_mode::kHSB && number < control::kChannelLabel1 + 3) {
        return U_ZStringToUTF16String(kHSBLabels[number - control::kChannelLabel1]);
    }
    return U_ZStringToUTF16String(kControlPlan[number].label);
}

void InfoPal_UI::ArrangeControls(const RectT<float>& rect) {
    if (rect.width <= 0 || rect.height <= 0) {
        return;
    }
    const float width = UI_GetLocalRectF().width;
    for (std::size_t number = control::kTextLine1; number < control::kTextLine1 + 3; ++number) {
        auto& row = TextControl(number);
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

const InfoPal_UI::ResolvedControls& InfoPal_UI::Controls() const {
    if (resolvedContainer_ != nullptr && UI_GetChildListVersion() == resolvedPanelVersion_ &&
        resolvedContainer_->UI_GetChildListVersion() == resolvedContainerVersion_) {
        return resolved_;
    }
    resolvedContainer_ = nullptr;
    const kitui::controls::UI_ControlsContainer* container = GetControlsContainer(0);
    ResolvedControls found;
    for (std::size_t number = 0; number < control::kCount; ++number) {
        if (kControlPlan[number].kind == ControlKind::Text) {
            found.text[number] = &GetControl<UI_StaticText>(number);
        }
    }
    found.swatch = &GetControl<kitui::controls::UI_SwatchRect>(control::kSwatch);
    resolved_ = found;
    resolvedPanelVersion_ = UI_GetChildListVersion();
    resolvedContainerVersion_ = container->UI_GetChildListVersion();
    resolvedContainer_ = container;
    return resolved_;
}

UI_StaticText& InfoPal_UI::TextControl(std::size_t number) const {
    UI_StaticText* text = number < control::kCount ? Controls().text[number] : nullptr;
    if (text == nullptr) {
        ThrowInvalidTypeConversion();
    }
    return *text;
}

} // namespace infopal
