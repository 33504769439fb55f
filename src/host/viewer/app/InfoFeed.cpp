#include "InfoFeed.h"

#include <cctype>
#include <cmath>
#include <exception>

#include "composition/Composition.h"
#include "editing/LayerEditor.h"
#include "pixelview/AreaSample.h"
#include "pixelview/PixelViewHost.h"
#include "qzgp/QZ_InfoPaletteSuite.h"
#include "qzhost/HostControls.h"
#include "qzhost/MonitorProfile.h"

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

/// What the third text line says of the sample: the square whose mean is shown when it
/// is not the point, and whether the values are the displayed ones.
std::string SampleNote(int size, bool displayed) {
    std::string note = size == 1 ? "" : qzhost::pixelview::SampleSizeName(size) + " mean";
    if (displayed) {
        note += note.empty() ? "displayed" : ", displayed";
    }
    return note;
}

/// The most characters of a text line that the panel shows whole at its narrowest.
constexpr std::size_t kLineRoom = 33;

/// The third text line over a layer: its image's format, channel type and size, then the
/// sample's note. The panel is narrow: where both do not fit, the note keeps the image's
/// size only, or stands alone.
std::string ImageLine(const LayerImage& image, const std::string& note) {
    const std::string size =
        std::to_string(image.frameWidth) + " x " + std::to_string(image.frameHeight);
    const std::string full = image.format + " " + image.channelType + ", " + size;
    if (note.empty()) {
        return full;
    }
    for (const std::string& line : {full + ", " + note, size + ", " + note}) {
        if (line.size() <= kLineRoom) {
            return line;
        }
    }
    return note;
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
    ShowHoverText(pointer_ ? composition_.LayerAt(pointer_->x, pointer_->y)
                           : editor_.SelectedLayer());
}

void InfoFeed::Deliver() {
    if (!pixelDue_ || !pointer_) {
        return;
    }
    pixelDue_ = false;
    const int x = static_cast<int>(std::floor(pointer_->x));
    const int y = static_cast<int>(std::floor(pointer_->y));
    const WorkingPixel working = sampler_.At(*composition_.Snapshot(), x, y, sampleSize_);
    const WorkingPixel p = displayed_ ? DisplayedPixel(working, display_) : working;
    std::optional<qzhost::pixelview::Point> origin;
    if (origin_) {
        origin = qzhost::pixelview::Point{origin_->x, origin_->y};
    }
    try {
        host_.Deliver({p[3], p[0], p[1], p[2]}, {pointer_->x, pointer_->y}, origin);
    } catch (const std::exception&) {
        // The suite refused the pixel (its panel is closed, say): nothing to show.
        return;
    }
    delivered_ = Delivery{p, working, *pointer_, origin_, sampleSize_, displayed_};
    emit pixelDelivered();
}

void InfoFeed::SetSampleSize(int size) {
    if (size != sampleSize_ && qzhost::pixelview::IsSampleSize(size)) {
        sampleSize_ = size;
        SamplingChanged();
    }
}

void InfoFeed::SetDisplayedValues(bool displayed) {
    if (displayed != displayed_) {
        displayed_ = displayed;
        ShowSwatchAsCanvas();
        SamplingChanged();
    }
}

void InfoFeed::SetDisplay(const DisplaySettings& display) {
    if (display == display_) {
        return;
    }
    display_ = display;
    ShowSwatchAsCanvas();
    // The swatch, and the values when they are the displayed ones, change with the display.
    PixelChanged();
    emit frameDue();
}

void InfoFeed::ShowSwatchAsCanvas() {
    // The host's monitor transform takes what the palette is given to what the monitor
    // shows: the display transform for working values, nothing more for displayed ones
    // (the monitor's profile, if any, comes after it either way).
    qzhost::SetMonitorDisplay(displayed_ ? nullptr : DisplayTransform(display_));
}

void InfoFeed::SamplingChanged() {
    if (hoverShown_ && !editor_.Dragging()) {
        ShowHover();
    }
    PixelChanged();
    emit frameDue();
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
    hovered_ = hovered != nullptr ? hovered->id : 0;
    hoverShown_ = true;
    const Layer* selected = editor_.SelectedLayer();
    const bool over = hovered != nullptr && hovered->Drawn();
    const char* hint = ToolHint(editor_.CurrentTool(), composition_.Empty(), over,
                                selected != nullptr && selected->Drawn());
    const std::string note = SampleNote(sampleSize_, displayed_);
    if (!over) {
        std::string alone = note;
        if (!alone.empty()) {
            alone[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(alone[0])));
        }
        ShowTextLines(hint, "", alone);
        return;
    }
    const LayerImage& image = *hovered->image;
    // The layer's name with the channel set it shows, when its image has several, and the
    // colour space its values are read from, with a colour config.
    std::string name = image.channels ? hovered->name + " [" + image.setName + "]" : hovered->name;
    if (!image.colourSpace.empty()) {
        name += " (" + image.colourSpace + ")";
    }
    ShowTextLines(hint, name, ImageLine(image, note));
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
