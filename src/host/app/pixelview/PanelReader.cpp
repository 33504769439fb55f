#include "pixelview/PanelReader.h"

#include <string_view>
#include <typeinfo>

#include "kitui/controls/UI_ControlsContainer.h"
#include "kitui/controls/UI_StaticText.h"
#include "kitui/ui/UI_Describable.h"
#include "qzhost/WorkspaceModel.h"
#include "script/ScriptSession.h"

namespace qzhost::pixelview {

namespace {

/// The theme colour of alert text.
constexpr std::size_t kAlertColorID = 10076;

/// The panel's description, kept in the fields of a panel state by key; keys that the
/// snapshot does not report are passed over.
class StateDescription : public kitui::ui::UI_Description {
public:
    explicit StateDescription(PanelState& state) : state_(state) {
        for (DescribedValue* value : {&state.mode, &state.minWidth, &state.minHeight, &state.type,
                                      &state.lines, &state.flag, &state.swatch[0], &state.swatch[1],
                                      &state.swatch[2], &state.swatch[3]}) {
            value->kind = DescribedValue::Kind::None;
        }
    }

    void SetInteger(const char* key, std::int64_t value) override {
        if (DescribedValue* out = Field(key)) {
            out->kind = DescribedValue::Kind::Integer;
            out->integer = value;
        }
    }
    void SetNumber(const char* key, double value) override {
        if (DescribedValue* out = Field(key)) {
            out->kind = DescribedValue::Kind::Number;
            out->number = value;
        }
    }
    void SetText(const char* key, const kitcore::utility::UTF16String& value) override {
        if (DescribedValue* out = Field(key)) {
            out->kind = DescribedValue::Kind::Text;
            AssignUtf8(std::u16string_view(value.data(), value.size()), out->text);
        }
    }
    void SetTextList(const char* key,
                     const std::vector<kitcore::utility::UTF16String>& value) override {
        if (DescribedValue* out = Field(key)) {
            out->kind = DescribedValue::Kind::TextList;
            if (out->list.size() < value.size()) {
                out->list.resize(value.size());
            }
            for (std::size_t i = 0; i < value.size(); ++i) {
                AssignUtf8(std::u16string_view(value[i].data(), value[i].size()), out->list[i]);
            }
            out->listSize = value.size();
        }
    }

private:
    DescribedValue* Field(const char* key) {
        // The keys that the snapshot reports, told apart by their first letters.
        const std::string_view name(key);
        switch (name.empty() ? '\0' : name[0]) {
        case 'm':
            return name == "mode"         ? &state_.mode
                   : name == "min_width"  ? &state_.minWidth
                   : name == "min_height" ? &state_.minHeight
                                          : nullptr;
        case 't':
            return name == "type" ? &state_.type : nullptr;
        case 'l':
            return name == "lines" ? &state_.lines : nullptr;
        case 'f':
            return name == "flag" ? &state_.flag : nullptr;
        case 's':
            if (name.size() == 8 && name.substr(0, 7) == "swatch_") {
                switch (name[7]) {
                case 'r':
                    return &state_.swatch[0];
                case 'g':
                    return &state_.swatch[1];
                case 'b':
                    return &state_.swatch[2];
                case 'a':
                    return &state_.swatch[3];
                default:
                    return nullptr;
                }
            }
            return nullptr;
        default:
            return nullptr;
        }
    }

    PanelState& state_;
};

/// Writes the UTF-8 form of `c` at `at`; returns the end.
char* PutCodePoint(char32_t c, char* at) {
    if (c < 0x80) {
        *at++ = static_cast<char>(c);
    } else if (c < 0x800) {
        *at++ = static_cast<char>(0xC0 | (c >> 6));
        *at++ = static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        *at++ = static_cast<char>(0xE0 | (c >> 12));
        *at++ = static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        *at++ = static_cast<char>(0x80 | (c & 0x3F));
    } else {
        *at++ = static_cast<char>(0xF0 | (c >> 18));
        *at++ = static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        *at++ = static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        *at++ = static_cast<char>(0x80 | (c & 0x3F));
    }
    return at;
}

} // namespace

void AssignUtf8(std::u16string_view utf16, std::string& out) {
    // Each UTF-16 unit gives at most three bytes (a surrogate pair four for two).
    out.resize(utf16.size() * 3);
    char* const begin = out.data();
    char* at = begin;
    for (std::size_t i = 0; i < utf16.size(); ++i) {
        const char16_t unit = utf16[i];
        if (unit < 0xD800 || unit > 0xDFFF) {
            at = PutCodePoint(unit, at);
        } else if (unit <= 0xDBFF && i + 1 < utf16.size() && utf16[i + 1] >= 0xDC00 &&
                   utf16[i + 1] <= 0xDFFF) {
            at = PutCodePoint(0x10000 + ((static_cast<char32_t>(unit) - 0xD800) << 10) +
                                  (static_cast<char32_t>(utf16[i + 1]) - 0xDC00),
                              at);
            ++i;
        } else {
            at = PutCodePoint(0xFFFD, at);
        }
    }
    out.resize(static_cast<std::size_t>(at - begin));
}

void PanelReader::Read(PanelState& state) {
    WorkspaceModel& workspace = WorkspaceModel::Get();
    const kitworkspace::workspace::TabPanel* panel = workspace.Panel(script::kInfoTabType);
    state.panel = panel != nullptr;
    if (panel == nullptr) {
        return;
    }
    StateDescription description(state);
    if (const auto* describable = dynamic_cast<const kitui::ui::UI_Describable*>(panel)) {
        describable->UI_Describe(description);
    }
    state.visible = workspace.State(script::kInfoTabType).Visible();
    const kitui::ui::RectT<float> bounds = panel->UI_GetBounds();
    state.size[0] = bounds.width;
    state.size[1] = bounds.height;

    const auto* container =
        panel->UI_GetChildCount() > 0
            ? dynamic_cast<const kitui::controls::UI_ControlsContainer*>(panel->UI_GetChild(0))
            : nullptr;
    // Every control that the panel made, by layout number.
    const std::size_t count = container != nullptr ? container->UI_GetChildCount() : 0;
    state.controls.resize(count);
    for (std::size_t id = 0; id < count; ++id) {
        ControlState& control = state.controls[id];
        control.exists = false;
        control.isText = false;
        // The container's control at `id`: its child there, when that is a control view.
        const kitui::ui::UI_Node* child =
            container != nullptr ? container->UI_GetChild(id) : nullptr;
        if (child == nullptr) {
            continue;
        }
        const ControlClass& cls = ClassOf(*child);
        if (!cls.isControl) {
            continue;
        }
        const auto* view = static_cast<const kitui::controls::UI_ControlView*>(child);
        control.exists = true;
        control.className = cls.name;
        const kitui::ui::RectT<float> rect = view->UI_GetBounds();
        control.rect[0] = rect.x;
        control.rect[1] = rect.y;
        control.rect[2] = rect.width;
        control.rect[3] = rect.height;
        control.visible = view->UI_IsShown();
        if (cls.isText) {
            const auto* text = static_cast<const kitui::controls::UI_StaticText*>(view);
            control.isText = true;
            const auto& value = text->GetValue();
            AssignUtf8(std::u16string_view(value.data(), value.size()), control.text);
            const std::optional<std::size_t> colour = text->GetTextColorID();
            if (colour == kAlertColorID) {
                control.colour = TextColour::Alert;
            } else if (text->HasDefaultTextColor()) {
                control.colour = TextColour::Default;
            } else {
                control.colour = TextColour::Numbered;
                control.colourNumber = *colour;
            }
        }
    }
}

const PanelReader::ControlClass& PanelReader::ClassOf(const kitui::ui::UI_Node& child) {
    const std::type_info& type = typeid(child);
    for (const auto& entry : classes_) {
        if (entry->type == &type || *entry->type == type) {
            return *entry;
        }
    }
    auto added = std::make_unique<ControlClass>();
    added->type = &type;
    const auto* view = dynamic_cast<const kitui::controls::UI_ControlView*>(&child);
    added->isControl = view != nullptr;
    if (view != nullptr) {
        added->name = view->GetControlClassName();
        added->isText = dynamic_cast<const kitui::controls::UI_StaticText*>(view) != nullptr;
    }
    return *classes_.emplace_back(std::move(added));
}

} // namespace qzhost::pixelview
