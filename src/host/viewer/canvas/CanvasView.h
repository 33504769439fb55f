// The composition viewer: the composition drawn at a zoom, each of its pixels its pixel
// aspect times as wide as tall (whole screen pixels tall when magnified); the wheel zooms
// around the pointer, the middle button (or the space bar with the left button) pans,
// Ctrl+click sets the origin. A drag with the left button, and the wheel with Alt held,
// are reported for the current tool to act on; the selected layer's outline, corner
// handles and anchor point are drawn over the composition.
//
// What it shows is kept apart from what the pointer measures. While anything changes (a
// drag, a scrub, a zoom) the canvas draws a preview from the layers' display images at
// the view's resolution; once the person lets go, the exact view of the visible region
// is rendered on a worker thread (cancelled and started again by any change) and
// replaces the preview. At rest, where a composition pixel covers a screen pixel or more
// across and down, every screen pixel then shows the display colour of the composition
// pixel that the pointer reads there.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>

#include <QImage>
#include <QWidget>

#include "CanvasMapping.h"
#include "CanvasScene.h"

namespace qzview {

class ViewRefiner;

/// What is drawn over the composition for the selected layer.
struct LayerOutline {
    /// The layer's corners in the composition: top-left, top-right, bottom-right,
    /// bottom-left.
    std::array<CompositionPoint, 4> corners;
    /// Where its anchor point lies in the composition.
    CompositionPoint anchor;
};

class CanvasView : public QWidget {
    Q_OBJECT
public:
    explicit CanvasView(QWidget* parent = nullptr);

    ~CanvasView() override;

    /// Shows `scene` (a new generation of it).
    void SetScene(CanvasScene scene);
    const CanvasScene& Scene() const noexcept { return scene_; }
    /// Holds the exact view back while an edit made elsewhere (a scrub in a dock) goes on;
    /// it is rendered when the hold ends.
    void SetHold(bool hold);
    /// Whether the canvas shows the preview (the exact view is not ready for what it
    /// shows now).
    bool ShowingPreview() const noexcept;
    /// The exact renders finished so far.
    int RefinementsFinished() const noexcept;

    const CanvasMapping& Mapping() const noexcept { return mapping_; }
    /// Sets the zoom (the nearest level) around the canvas centre.
    void ZoomTo(double zoom);
    /// Sets the zoom (the nearest level) with the composition's centre at the canvas
    /// centre, as a zoom asked for on the command line opens.
    void ZoomCentred(double zoom);
    void ZoomIn();
    void ZoomOut();
    void FitToWindow();
    void ActualPixels();

    /// The composition position under widget point `point` (logical coordinates).
    CompositionPoint PositionAt(const QPointF& point) const;
    /// The widget point (logical coordinates) where composition point `point` is drawn.
    QPointF WidgetPointOf(const CompositionPoint& point) const;

    /// Draws the selected layer's outline (none: nothing drawn over the composition).
    void SetOutline(std::optional<LayerOutline> outline);

signals:
    /// The pointer moved over the canvas to `position` (composition pixels).
    void pointerMoved(qzview::CompositionPoint position);
    /// The pointer left the canvas.
    void pointerLeft();
    /// Ctrl+click: the origin is to be set at `position`.
    void originPicked(qzview::CompositionPoint position);
    /// The left button went down at `position` (not Ctrl+click, not a pan).
    void dragPressed(qzview::CompositionPoint position, Qt::KeyboardModifiers modifiers);
    /// The pointer moved with the left button down.
    void dragMoved(qzview::CompositionPoint position, Qt::KeyboardModifiers modifiers);
    /// The left button came up, ending the drag.
    void dragReleased();
    /// The wheel turned `steps` notches (up: positive) with Alt held.
    void scaleWheel(int steps, Qt::KeyboardModifiers modifiers);
    /// The zoom changed to `zoom` (screen pixels per composition pixel).
    void zoomChanged(double zoom);
    /// The canvas went from the preview to the exact view or back.
    void previewChanged(bool preview);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    /// The screen (device) pixel of a widget point.
    QPoint DevicePixel(const QPointF& point) const;
    void ZoomAroundDevice(double zoom, QPoint device);
    /// The view changed (the mapping, the size or the scene): the preview is drawn again
    /// and the exact view asked for.
    void Changed();
    void FitWithoutChoosing();
    bool Interacting() const noexcept { return dragging_ || panning_ || hold_; }
    /// Starts the exact render of the view as it is now, unless one is under way for it or
    /// the person is still interacting.
    void Refine();
    void Adopt(std::uint64_t request, QImage view);
    void TellPreview();
    QSize DeviceSize() const;

    CanvasMapping mapping_;
    CanvasScene scene_;
    /// The preview as last drawn, valid until the view changes.
    QImage view_;
    bool viewValid_ = false;
    /// Counts the changes to the view; the exact view is kept for the one it was made for.
    std::uint64_t request_ = 1;
    std::uint64_t started_ = 0;
    QImage exact_;
    std::uint64_t exactFor_ = 0;
    bool previewShown_ = true;
    /// The zoom last told by zoomChanged.
    double toldZoom_ = 0;
    /// The canvas's size (device pixels) as the mapping was last placed for it.
    QSize size_;
    bool hold_ = false;
    std::unique_ptr<ViewRefiner> refiner_;
    std::optional<LayerOutline> outline_;
    bool dragging_ = false;
    bool spaceHeld_ = false;
    bool panning_ = false;
    QPoint panFrom_;
    /// Whether the zoom was chosen (by the user or the command line): until then the
    /// composition is fitted into the canvas whenever the canvas changes size.
    bool fitted_ = false;
};

} // namespace qzview
