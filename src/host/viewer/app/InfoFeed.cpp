#include "InfoFeed.h"

#include <cmath>
#include <exception>

#include "composition/Composition.h"
#include "editing/LayerEditor.h"
#include "pixelview/PixelViewHost.h"
#include "qzgp/QZ_InfoPaletteSuite.h"
#include "qzhost/HostControls.h"

namespace qzview {

namespace {

/// The first text line: what the current tool does from where the pointer is. A press
/// takes the layer under the pointer; the anchor-point and rotation tools go on with the
/// selected layer when the press is beside every layer. Short enough for the panel's width
/// at UI scale 2.
const char* ToolHint(Tool tool, bool empty, bool over_layer, bool selected) {
    if (empty) {
        return "Open an image: File > Open";
    }
    switch (tool) {
    case Tool::Selection:
        if (over_layer) {
            return "Drag to move, corners to scale";
        }
        return selected ? "Drag a corner to scale" : "Click a layer to select it";
    case Tool::AnchorPoint:
        return over_layer || selected ? "Drag to move the anchor point"
                                      : "Select a layer to move its anchor";
    case Tool::Rotation:
        return over_layer || selected ? "Drag to rotate about the anchor"
                                      : "Select a layer to rotate it";
    }
    return "";
}

} // namespace

InfoFeed::InfoFeed(qzhost::pixelview::PixelViewHost& host, const Composition& composition,
                   const LayerEditor& editor, QObject* parent)
    : QObject(parent), host_(host), composition_(composition), editor_(editor) {}

void InfoFeed::PointerAt(CompositionPoint position) {
    pointer_ = position;
    pixelDue_ = true;
    const Layer* hovered = composition_.LayerAt(position.x, position.y);
    const int id = hovered != nullptr ? hovered->id : 0;
    // While a layer is dragged, its readout stays in the text lines.
    if ((id != hovered_ || !hoverShown_) && !editor_.Dragging()) {
        hovered_ = id;
        hoverShown_ = true;
        ShowHoverText(hovered);
    }
    emit frameDue();
}

void InfoFeed::SetOrigin(std::optional<CompositionPoint> origin) {
    origin_ = origin;
    PixelChanged();
    emit frameDue();
}

void InfoFeed::ToolChanged() {
    hoverShown_ = false;
    if (pointer_) {
        PointerAt(*pointer_);
    }
}

void InfoFeed::LayersChanged() noexcept {
    hovered_ = 0;
    hoverShown_ = false;
}

void InfoFeed::ShowReadErrors(const std::vector<std::string>& errors) {
    if (errors.empty()) {
        return;
    }
    const std::string first = errors.size() == 1
                                  ? "Cannot read the image"
                                  : "Cannot read " + std::to_string(errors.size()) + " images";
    lines_ = Lines{first, errors[0], errors.size() > 1 ? errors[1] : "", true};
    WriteLines();
    hoverShown_ = false;
}

void InfoFeed::ShowHover() {
    // Before the pointer has been on the canvas, the lines describe the selected layer
    // (the image just opened).
    const Layer* hovered =
        pointer_ ? composition_.LayerAt(pointer_->x, pointer_->y) : editor_.SelectedLayer();
    hovered_ = hovered != nullptr ? hovered->id : 0;
    hoverShown_ = true;
    ShowHoverText(hovered);
}

void InfoFeed::Deliver() {
    if (!pixelDue_ || !pointer_) {
        return;
    }
    pixelDue_ = false;
    const int x = static_cast<int>(std::floor(pointer_->x));
    const int y = static_cast<int>(std::floor(pointer_->y));
    const WorkingPixel p = composition_.PixelAt(x, y);
    std::optional<qzhost::pixelview::Point> origin;
    if (origin_) {
        origin = qzhost::pixelview::Point{origin_->x, origin_->y};
    }
    try {
        host_.Deliver({p[3], p[0], p[1], p[2]}, {pointer_->x, pointer_->y}, origin);
    } catch (const std::exception&) {
        // The suite refused the pixel (its panel is closed, say): nothing to show.
    }
}

void InfoFeed::PanelOpened() {
    if (lines_) {
        WriteLines();
    } else {
        ShowHover();
    }
    PixelChanged();
    emit frameDue();
}

void InfoFeed::ShowHoverText(const Layer* hovered) {
    const Layer* selected = editor_.SelectedLayer();
    const bool over = hovered != nullptr && hovered->Drawn();
    const char* hint = ToolHint(editor_.CurrentTool(), composition_.Empty(), over,
                                selected != nullptr && selected->Drawn());
    if (!over) {
        ShowTextLines(hint, "", "");
        return;
    }
    const LayerImage& image = *hovered->image;
    // The layer's name with the channel set it shows, when its image has several.
    const std::string name =
        image.channels ? hovered->name + " [" + image.setName + "]" : hovered->name;
    ShowTextLines(hint, name,
                  image.format + " " + image.channelType + ", " + std::to_string(image.frameWidth) +
                      " x " + std::to_string(image.frameHeight));
}

void InfoFeed::ShowTextLines(const std::string& a, const std::string& b, const std::string& c) {
    lines_ = Lines{a, b, c, false};
    WriteLines();
}

void InfoFeed::WriteLines() {
    qzhost::HostControls::Get().SetAlerts(lines_->alert, false, false, false);
    const QZ_InfoPaletteSuite2& suite = host_.Suite();
    suite.SetTextLines3(lines_->a.c_str(), lines_->b.c_str(), lines_->c.c_str());
    emit frameDue();
}

} // namespace qzview
