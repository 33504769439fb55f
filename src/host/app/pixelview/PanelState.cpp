#include "pixelview/PanelState.h"

namespace qzhost::pixelview {

namespace {

using script::Json;

void ReadValue(const Json& value, DescribedValue& out) {
    if (value.is_number_integer()) {
        out.kind = DescribedValue::Kind::Integer;
        out.integer = value.get<std::int64_t>();
    } else if (value.is_number()) {
        out.kind = DescribedValue::Kind::Number;
        out.number = value.get<double>();
    } else if (value.is_string()) {
        out.kind = DescribedValue::Kind::Text;
        out.text = value.get<std::string>();
    } else if (value.is_array()) {
        out.kind = DescribedValue::Kind::TextList;
        out.list.clear();
        for (const Json& entry : value) {
            out.list.push_back(entry.is_string() ? entry.get<std::string>() : entry.dump());
        }
        out.listSize = out.list.size();
    }
}

void ReadMember(const Json& object, const char* name, DescribedValue& out) {
    const auto member = object.find(name);
    if (member != object.end()) {
        ReadValue(*member, out);
    }
}

float Float(const Json& value) {
    return value.is_number() ? value.get<float>() : 0.0f;
}

} // namespace

double DescribedValue::AsNumber() const noexcept {
    switch (kind) {
    case Kind::Integer:
        return static_cast<double>(integer);
    case Kind::Number:
        return number;
    default:
        return 0;
    }
}

bool PanelState::HasSwatch() const noexcept {
    return swatch[0].Present() && swatch[1].Present() && swatch[2].Present() && swatch[3].Present();
}

PanelState PanelStateFromSnapshot(const Json& snapshot) {
    PanelState state;
    if (!snapshot.is_object()) {
        return state;
    }
    state.panel = snapshot.value("panel", false);
    state.visible = snapshot.value("visible", false);
    if (const auto size = snapshot.find("size");
        size != snapshot.end() && size->is_array() && size->size() == 2) {
        state.size[0] = Float((*size)[0]);
        state.size[1] = Float((*size)[1]);
    }
    ReadMember(snapshot, "mode", state.mode);
    if (const auto min = snapshot.find("min_size");
        min != snapshot.end() && min->is_array() && min->size() == 2) {
        ReadValue((*min)[0], state.minWidth);
        ReadValue((*min)[1], state.minHeight);
    }
    ReadMember(snapshot, "type", state.type);
    ReadMember(snapshot, "lines", state.lines);
    if (const auto flag = snapshot.find("flag"); flag != snapshot.end() && flag->is_boolean()) {
        state.flag.kind = DescribedValue::Kind::Integer;
        state.flag.integer = flag->get<bool>() ? 1 : 0;
    }
    if (const auto swatch = snapshot.find("swatch");
        swatch != snapshot.end() && swatch->is_array() && swatch->size() == 4) {
        for (std::size_t c = 0; c < 4; ++c) {
            ReadValue((*swatch)[c], state.swatch[c]);
        }
    }
    const auto controls = snapshot.find("controls");
    if (controls == snapshot.end() || !controls->is_array()) {
        return state;
    }
    for (const Json& control : *controls) {
        ControlState& out = state.controls.emplace_back();
        const auto cls = control.find("class");
        if (cls == control.end() || !cls->is_string()) {
            continue;
        }
        out.exists = true;
        out.className = cls->get_ref<const std::string&>();
        if (const auto rect = control.find("rect");
            rect != control.end() && rect->is_array() && rect->size() == 4) {
            for (std::size_t i = 0; i < 4; ++i) {
                out.rect[i] = Float((*rect)[i]);
            }
        }
        out.visible = control.value("visible", false);
        if (const auto text = control.find("text"); text != control.end() && text->is_string()) {
            out.isText = true;
            out.text = text->get<std::string>();
        }
        if (const auto colour = control.find("color"); colour != control.end()) {
            if (*colour == "alert") {
                out.colour = TextColour::Alert;
            } else if (colour->is_number_unsigned()) {
                out.colour = TextColour::Numbered;
                out.colourNumber = colour->get<std::size_t>();
            }
        }
    }
    return state;
}

} // namespace qzhost::pixelview
