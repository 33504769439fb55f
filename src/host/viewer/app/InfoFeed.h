// What the viewer tells the Info palette about the pointer. The pixel under it is
// delivered at most once a frame, and again whenever what lies under a still pointer may
// have changed, with the origin of X', Y' when one is set. The pixel is the composite's
// own, or the mean of the square around it (View > Sample Size), in working values or as
// the display shows them (View > Sample Values). The text lines give the tool's hint and
// what is known of the hovered image, with the sample when it is not the plain point;
// they are written when the pointer comes onto another layer, but not during a drag,
// whose property readout keeps the lines. The swatch shows the colour that the canvas
// shows: the host's monitor transform is the canvas's display transform.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <QObject>

#include "canvas/CanvasMapping.h"
#include "canvas/DisplayImage.h"
#include "composition/CompositeSample.h"

namespace qzhost::pixelview {
class PixelViewHost;
}

namespace qzview {

class Composition;
struct Layer;
class LayerEditor;

class InfoFeed : public QObject {
    Q_OBJECT
public:
    /// Reads `composition` under the pointer and `editor`'s tool and drag; delivers to
    /// `host`'s palette.
    InfoFeed(qzhost::pixelview::PixelViewHost& host, const Composition& composition,
             const LayerEditor& editor, QObject* parent = nullptr);

    /// The pointer moved to `position` on the canvas.
    void PointerAt(CompositionPoint position);
    /// Where the pointer was last on the canvas.
    const std::optional<CompositionPoint>& Pointer() const noexcept { return pointer_; }

    /// The origin for X', Y', if set.
    const std::optional<CompositionPoint>& Origin() const noexcept { return origin_; }
    void SetOrigin(std::optional<CompositionPoint> origin);

    /// What lies under a still pointer may have changed: its pixel is delivered again at
    /// the next frame.
    void PixelChanged() noexcept { pixelDue_ = pointer_.has_value(); }
    /// Another tool was chosen: its hint is written now if the pointer is on the canvas.
    void ToolChanged();
    /// The layers were listed again: the hovered layer's lines follow the next move.
    void LayersChanged() noexcept;
    /// Writes, as an alert, that images could not be read and why (the first two reasons).
    void ShowReadErrors(const std::vector<std::string>& errors);
    /// Something else wrote the text lines (a property readout): the hover lines come back
    /// at the next pointer move outside a drag.
    void LinesTaken() noexcept { hoverShown_ = false; }
    /// The Info panel was created (again): it is given the text lines that the viewer last
    /// wrote (the hover lines if none) and the pixel under the pointer at the next frame.
    void PanelOpened();
    /// Writes the hover lines now (the tool's hint and the layer under the pointer),
    /// whatever the lines show.
    void ShowHover();

    /// The frame's part: delivers the pixel under the pointer when it is due.
    void Deliver();

    /// The side of the square whose mean is delivered (1: the pixel itself).
    void SetSampleSize(int size);
    int SampleSize() const noexcept { return sampleSize_; }
    /// Whether the values delivered are the displayed ones rather than the working ones.
    void SetDisplayedValues(bool displayed);
    bool DisplayedValues() const noexcept { return displayed_; }
    /// How the canvas shows the composition, which the swatch and the displayed values
    /// follow.
    void SetDisplay(const DisplaySettings& display);

    /// What the palette was last given.
    struct Delivery {
        /// Red, green, blue, alpha, as delivered.
        std::array<float, 4> pixel{};
        /// The working values that they were made from (the same unless displayed).
        std::array<float, 4> working{};
        CompositionPoint position;
        std::optional<CompositionPoint> origin;
        int sampleSize = 1;
        bool displayed = false;
    };
    /// The last pixel that the palette took; none before the first.
    const std::optional<Delivery>& Delivered() const noexcept { return delivered_; }

signals:
    /// The palette was given something to show, or a pixel is due: a frame is wanted.
    void frameDue();
    /// The palette took a pixel (Delivered() holds it).
    void pixelDelivered();

private:
    /// Writes the hover lines for `hovered` (none: beside every layer) and keeps which
    /// layer they describe.
    void ShowHoverText(const Layer* hovered);
    /// The sampling changed: the pixel is delivered again and the hover lines, when they
    /// are shown, say so now.
    void SamplingChanged();
    /// Gives the host's monitor the transform that makes the swatch show what the canvas
    /// shows for the values delivered.
    void ShowSwatchAsCanvas();
    void ShowTextLines(const std::string& a, const std::string& b, const std::string& c);
    void WriteLines();

    qzhost::pixelview::PixelViewHost& host_;
    const Composition& composition_;
    const LayerEditor& editor_;
    std::optional<CompositionPoint> pointer_;
    bool pixelDue_ = false;
    std::optional<CompositionPoint> origin_;
    /// The id of the layer under the pointer (0: none).
    int hovered_ = 0;
    bool hoverShown_ = false;
    /// The text lines as the viewer last wrote them, and whether they were an alert.
    struct Lines {
        std::string a, b, c;
        bool alert = false;
    };
    std::optional<Lines> lines_;
    CompositeSampler sampler_;
    int sampleSize_ = 1;
    bool displayed_ = false;
    DisplaySettings display_;
    std::optional<Delivery> delivered_;
};

} // namespace qzview
