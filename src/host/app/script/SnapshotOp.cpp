// The "snapshot" op: what the Info panel shows. The host sees the panel's bounds and its
// controls itself; the panel's own state (display mode, text lines, minimum size, swatch
// colour, the palette's flag) comes from the panel's description of itself.
#include <cstddef>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "kitui/controls/UI_ControlsContainer.h"
#include "kitui/controls/UI_StaticText.h"
#include "kitui/ui/Theme.h"
#include "kitui/ui/UI_Describable.h"
#include "qzhost/HostControls.h"
#include "qzhost/PanelRenderer.h"
#include "qzhost/WorkspaceModel.h"
#include "script/OpTable.h"
#include "script/ScriptErrors.h"
#include "script/Shape.h"
#include "script/Values.h"

namespace qzhost::script {

namespace {

/// A description collected as JSON values by key.
class JsonDescription : public kitui::ui::UI_Description {
public:
    void SetInteger(const char* key, std::int64_t value) override { values_[key] = value; }
    void SetNumber(const char* key, double value) override { values_[key] = NumberOut(value); }
    void SetText(const char* key, const kitcore::utility::UTF16String& value) override {
        values_[key] = UTF16ToUTF8(value);
    }
    void SetTextList(const char* key,
                     const std::vector<kitcore::utility::UTF16String>& value) override {
        Json list = Json::array();
        for (const auto& text : value) {
            list.push_back(UTF16ToUTF8(text));
        }
        values_[key] = std::move(list);
    }

    const Json* Find(const std::string& key) const {
        auto it = values_.find(key);
        return it == values_.end() ? nullptr : &it->second;
    }

private:
    std::map<std::string, Json, std::less<>> values_;
};

Json Rect(const kitui::ui::RectT<float>& rect) {
    return Json::array(
        {NumberOut(rect.x), NumberOut(rect.y), NumberOut(rect.width), NumberOut(rect.height)});
}

Json TextColor(const kitui::controls::UI_TextControl& text) {
    if (text.GetTextColorID() == kitui::ui::color_id::kAlertText) {
        return "alert";
    }
    if (text.HasDefaultTextColor()) {
        return "default";
    }
    return *text.GetTextColorID();
}

Json Controls(const kitui::ui::UI_Node& panel) {
    Json controls = Json::array();
    const auto* container =
        panel.UI_GetChildCount() > 0
            ? dynamic_cast<const kitui::controls::UI_ControlsContainer*>(panel.UI_GetChild(0))
            : nullptr;
    // Every control that the panel made, by layout number: the panel's own plan decides
    // how many there are.
    const std::size_t count = container != nullptr ? container->UI_GetChildCount() : 0;
    for (std::size_t id = 0; id < count; ++id) {
        Json control = Json::object();
        control["id"] = id;
        const kitui::controls::UI_ControlView* view =
            container != nullptr ? container->GetControl(id) : nullptr;
        if (view == nullptr) {
            control["class"] = nullptr;
            controls.push_back(std::move(control));
            continue;
        }
        control["class"] = view->GetControlClassName();
        control["rect"] = Rect(view->UI_GetBounds());
        control["visible"] = view->UI_IsShown();
        if (const auto* text = dynamic_cast<const kitui::controls::UI_StaticText*>(view)) {
            control["text"] = UTF16ToUTF8(text->GetValue());
            control["color"] = TextColor(*text);
        }
        controls.push_back(std::move(control));
    }
    return controls;
}

Json Snapshot(ScriptSession&, const OpArgs& args) {
    args.AllowOnly({"png"});
    std::string png;
    if (const Json* path = args.Find("png")) {
        png = AsString(*path, "\"png\"");
    }
    WorkspaceModel& workspace = WorkspaceModel::Get();
    Json out = OpOutput(args);
    kitworkspace::workspace::TabPanel* panel = workspace.Panel(kInfoTabType);
    out["panel"] = panel != nullptr;
    if (panel == nullptr) {
        return out;
    }

    JsonDescription description;
    if (const auto* describable = dynamic_cast<const kitui::ui::UI_Describable*>(panel)) {
        describable->UI_Describe(description);
    }
    auto copy = [&](const char* key, const char* field) {
        if (const Json* value = description.Find(key)) {
            out[field] = *value;
        }
    };

    out["visible"] = workspace.State(kInfoTabType).Visible();
    copy("mode", "mode");
    const kitui::ui::RectT<float> bounds = panel->UI_GetBounds();
    out["size"] = Json::array({NumberOut(bounds.width), NumberOut(bounds.height)});
    const Json* min_width = description.Find("min_width");
    const Json* min_height = description.Find("min_height");
    if (min_width != nullptr && min_height != nullptr) {
        out["min_size"] = Json::array({*min_width, *min_height});
    }
    copy("type", "type");
    copy("lines", "lines");
    if (const Json* flag = description.Find("flag")) {
        out["flag"] = *flag != 0;
    }
    out["controls"] = Controls(*panel);
    const Json* r = description.Find("swatch_r");
    const Json* g = description.Find("swatch_g");
    const Json* b = description.Find("swatch_b");
    const Json* a = description.Find("swatch_a");
    if (r != nullptr && g != nullptr && b != nullptr && a != nullptr) {
        out["swatch"] = Json::array({*r, *g, *b, *a});
    }

    if (!png.empty()) {
        try {
            RenderNodeToPng(*panel, HostControls::Get().UIScale(), png);
        } catch (const std::runtime_error& error) {
            throw HostFailure(std::string("snapshot: ") + error.what());
        }
    }
    return out;
}

} // namespace

void AddSnapshotOps(OpTable& table) {
    table.Add("snapshot", Snapshot);
}

} // namespace qzhost::script
