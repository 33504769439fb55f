// The composition viewer: the composition drawn at a zoom, with its pixels as squares of
// whole screen pixels when magnified; the wheel zooms around the pointer, the middle
// button (or the space bar with the left button) pans, Ctrl+click sets the origin. Every
// screen pixel is drawn with the composition pixel that the pointer reads there. A drag
// with the left button, and the wheel with Alt held, are reported for the current tool to
// act on; the selected layer's outline, corner handles and anchor point are drawn over the
// composition.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include <QImage>
#include <QWidget>

#include "CanvasMapping.h"

namespace qzview {

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

    /// Shows a composition of `width` x `height` pixels in display colours 0xAARRGGBB
    /// (not premultiplied).
    void SetPicture(int width, int height, std::vector<std::uint32_t> colours);
    /// Gives up the picture's colours, so that their storage serves the next picture.
    std::vector<std::uint32_t> TakePicture() noexcept { return std::move(colours_); }
    int CompositionWidth() const noexcept { return width_; }
    int CompositionHeight() const noexcept { return height_; }

    const CanvasMapping& Mapping() const noexcept { return mapping_; }
    /// Sets the zoom (the nearest level) around the canvas centre.
    void ZoomTo(double zoom);
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
    /// Whether a drag with the left button is under way.
    bool Dragging() const noexcept { return dragging_; }

signals:
    /// The pointer moved over the canvas to `position` (composition pixels).
    void pointerMoved(qzview::CompositionPoint position);
    /// The pointer left the canvas.
    void pointerLeft();
    /// Ctrl+click: the origin is to be set at `position`.
    void originPicked(qzview::CompositionPoint position);
    /// The zoom or the pan changed.
    void mappingChanged();
    /// The left button went down at `position` (not Ctrl+click, not a pan).
    void dragPressed(qzview::CompositionPoint position, Qt::KeyboardModifiers modifiers);
    /// The pointer moved with the left button down.
    void dragMoved(qzview::CompositionPoint position, Qt::KeyboardModifiers modifiers);
    /// The left button came up, ending the drag.
    void dragReleased();
    /// The wheel turned `steps` notches (up: positive) with Alt held.
    void scaleWheel(int steps, Qt::KeyboardModifiers modifiers);

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
    void Changed();
    void FitWithoutChoosing();

    CanvasMapping mapping_;
    int width_ = 0;
    int height_ = 0;
    std::vector<std::uint32_t> colours_;
    QImage view_;
    /// The composition column shown in each screen column of the view.
    std::vector<int> columns_;
    bool viewValid_ = false;
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
