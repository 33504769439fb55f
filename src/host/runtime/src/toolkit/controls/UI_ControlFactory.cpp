#include "kitui/controls/UI_ControlFactory.h"

#include <map>

#include "kitui/controls/UI_Checkbox.h"
#include "kitui/controls/UI_Divider.h"
#include "kitui/controls/UI_HotText.h"
#include "kitui/controls/UI_HotTextButton.h"
#include "kitui/controls/UI_HotTextNumber.h"
#include "kitui/controls/UI_NumberEdit.h"
#include "kitui/controls/UI_PictureButton.h"
#include "kitui/controls/UI_Popup.h"
#include "kitui/controls/UI_PopupListBox.h"
#include "kitui/controls/UI_Slider.h"
#include "kitui/controls/UI_StaticImage.h"
#include "kitui/controls/UI_StaticText.h"
#include "kitui/controls/UI_TextButton.h"
#include "kitui/controls/UI_TextEdit.h"

namespace kitui::controls {

namespace {

constexpr std::string_view kToolkitNamespace = "kitui::controls::";

template <class Control>
std::pair<std::string, UI_ControlCreator> Creator(std::string_view bare) {
    return {std::string(kToolkitNamespace) + std::string(bare),
            [](std::uint32_t flags) -> std::unique_ptr<UI_ControlView> {
                return std::make_unique<Control>(flags);
            }};
}

std::map<std::string, UI_ControlCreator, std::less<>>& Registry() {
    static std::map<std::string, UI_ControlCreator, std::less<>> registry{
        Creator<UI_Checkbox>("UI_Checkbox"),
        Creator<UI_Divider>("UI_Divider"),
        Creator<UI_HotText>("UI_HotText"),
        Creator<UI_HotTextButton>("UI_HotTextButton"),
        Creator<UI_HotTextNumber>("UI_HotTextNumber"),
        Creator<UI_NumberEdit>("UI_NumberEdit"),
        Creator<UI_PictureButton>("UI_PictureButton"),
        Creator<UI_Popup>("UI_Popup"),
        Creator<UI_PopupListBox>("UI_PopupListBox"),
        Creator<UI_Slider>("UI_Slider"),
        Creator<UI_StaticImage>("UI_StaticImage"),
        Creator<UI_StaticText>("UI_StaticText"),
        Creator<UI_TextButton>("UI_TextButton"),
        Creator<UI_TextEdit>("UI_TextEdit"),
    };
    return registry;
}

std::string_view TrimSpaces(std::string_view s) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) {
        s.remove_prefix(1);
    }
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t')) {
        s.remove_suffix(1);
    }
    return s;
}

} // namespace

std::string UI_QualifiedControlClassName(std::string_view name) {
    name = TrimSpaces(name);
    for (std::string_view keyword : {std::string_view("class "), std::string_view("struct ")}) {
        if (name.substr(0, keyword.size()) == keyword) {
            name = TrimSpaces(name.substr(keyword.size()));
            break;
        }
    }
    if (name.find("::") == std::string_view::npos) {
        return std::string(kToolkitNamespace) + std::string(name);
    }
    return std::string(name);
}

std::unique_ptr<UI_ControlView> UI_CreateControl(std::string_view class_name,
                                                 std::uint32_t creation_flags) {
    const auto& registry = Registry();
    const auto it = registry.find(UI_QualifiedControlClassName(class_name));
    if (it == registry.end() || !it->second) {
        return nullptr;
    }
    std::unique_ptr<UI_ControlView> control = it->second(creation_flags);
    if (control && !control->UI_IsPostCreated()) {
        control->UI_PostCreate();
    }
    return control;
}

bool UI_IsKnownControlClass(std::string_view class_name) {
    const auto& registry = Registry();
    const auto it = registry.find(UI_QualifiedControlClassName(class_name));
    return it != registry.end() && it->second;
}

void UI_RegisterControlClass(std::string_view class_name, UI_ControlCreator creator) {
    Registry()[UI_QualifiedControlClassName(class_name)] = std::move(creator);
}

} // namespace kitui::controls
