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

/// The hint of each tool, written as the first text line: short enough for the panel's
/// width at UI scale 2.
const char* ToolHint(Tool tool) {
    switch (tool) {
    case Tool::Selection:
        return "Drag to move, corners to scale";
    case Tool::AnchorPoint:
        return "Drag to move the anchor point";
    case Tool::Rotation:
        return "Drag to rotate about the anchor";
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

void InfoFeed::ShowReadError(const std::string& error) {
    qzhost::HostControls::Get().SetAlerts(true, false, false, false);
    ShowTextLines("Cannot read the image", error, "");
    hoverShown_ = false;
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

void InfoFeed::ShowHoverText(const Layer* hovered) {
    qzhost::HostControls::Get().SetAlerts(false, false, false, false);
    const char* hint = ToolHint(editor_.CurrentTool());
    if (hovered == nullptr || !hovered->Drawn()) {
        ShowTextLines(hint, "", "");
        return;
    }
    const LayerImage& image = *hovered->image;
    ShowTextLines(hint, hovered->name,
                  image.format + " " + image.channelType + ", " + std::to_string(image.width) +
                      " x " + std::to_string(image.height));
}

void InfoFeed::ShowTextLines(const std::string& a, const std::string& b, const std::string& c) {
    const QZ_InfoPaletteSuite2& suite = host_.Suite();
    suite.SetTextLines3(a.c_str(), b.c_str(), c.c_str());
    emit frameDue();
}

} // namespace qzview
