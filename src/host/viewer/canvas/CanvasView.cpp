#include "CanvasView.h"

#include <cmath>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

namespace qzview {

namespace {

/// The canvas behind transparent pixels: a checkerboard of 8-pixel squares.
std::uint32_t Checker(int x, int y) {
    return ((x >> 3) + (y >> 3)) % 2 == 0 ? 0xFF3A3A3Au : 0xFF2E2E2Eu;
}

std::uint32_t Over(std::uint32_t colour, std::uint32_t background) {
    const std::uint32_t a = colour >> 24;
    if (a == 255) {
        return colour;
    }
    if (a == 0) {
        return background;
    }
    std::uint32_t out = 0xFF000000u;
    for (int shift = 0; shift <= 16; shift += 8) {
        const std::uint32_t c = (colour >> shift) & 0xFF;
        const std::uint32_t b = (background >> shift) & 0xFF;
        out |= ((c * a + b * (255 - a) + 127) / 255) << shift;
    }
    return out;
}

} // namespace

CanvasView::CanvasView(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumSize(160, 120);
    setCursor(Qt::CrossCursor);
}

void CanvasView::SetPicture(int width, int height, std::vector<std::uint32_t> colours) {
    width_ = width;
    height_ = height;
    colours_ = std::move(colours);
    if (!fitted_) {
        FitWithoutChoosing();
    }
    Changed();
}

QPoint CanvasView::DevicePixel(const QPointF& point) const {
    const double ratio = devicePixelRatioF();
    return {static_cast<int>(std::floor(point.x() * ratio)),
            static_cast<int>(std::floor(point.y() * ratio))};
}

QPointF CanvasView::WidgetPointOf(const CompositionPoint& point) const {
    const double ratio = devicePixelRatioF();
    return {(mapping_.OriginX() + point.x * mapping_.Zoom()) / ratio,
            (mapping_.OriginY() + point.y * mapping_.Zoom()) / ratio};
}

void CanvasView::SetOutline(std::optional<LayerOutline> outline) {
    outline_ = outline;
    update();
}

CompositionPoint CanvasView::PositionAt(const QPointF& point) const {
    const QPoint device = DevicePixel(point);
    return mapping_.ToComposition(device.x(), device.y());
}

void CanvasView::Changed() {
    viewValid_ = false;
    update();
    emit mappingChanged();
}

void CanvasView::ZoomAroundDevice(double zoom, QPoint device) {
    mapping_.ZoomAround(zoom, device.x(), device.y());
    fitted_ = true;
    Changed();
}

void CanvasView::ZoomTo(double zoom) {
    const double ratio = devicePixelRatioF();
    ZoomAroundDevice(
        CanvasMapping::NearestLevel(zoom),
        QPoint(static_cast<int>(width() * ratio / 2), static_cast<int>(height() * ratio / 2)));
}

void CanvasView::ZoomIn() {
    ZoomTo(mapping_.Step(1));
}

void CanvasView::ZoomOut() {
    ZoomTo(mapping_.Step(-1));
}

void CanvasView::FitWithoutChoosing() {
    const double ratio = devicePixelRatioF();
    if (width_ > 0) {
        mapping_.Fit(width_, height_, static_cast<int>(width() * ratio),
                     static_cast<int>(height() * ratio));
    }
}

void CanvasView::FitToWindow() {
    FitWithoutChoosing();
    fitted_ = width_ > 0;
    Changed();
}

void CanvasView::resizeEvent(QResizeEvent*) {
    if (!fitted_) {
        FitWithoutChoosing();
    }
    Changed();
}

void CanvasView::ActualPixels() {
    const double ratio = devicePixelRatioF();
    mapping_.Actual(width_, height_, static_cast<int>(width() * ratio),
                    static_cast<int>(height() * ratio));
    fitted_ = true;
    Changed();
}

void CanvasView::paintEvent(QPaintEvent*) {
    const double ratio = devicePixelRatioF();
    const int w = std::max(1, static_cast<int>(std::lround(width() * ratio)));
    const int h = std::max(1, static_cast<int>(std::lround(height() * ratio)));
    if (!viewValid_ || view_.width() != w || view_.height() != h) {
        if (view_.width() != w || view_.height() != h) {
            view_ = QImage(w, h, QImage::Format_RGB32);
        }
        // The mapping takes columns and rows apart: each screen column shows one
        // composition column, each screen row one composition row.
        columns_.resize(static_cast<std::size_t>(w));
        for (int x = 0; x < w; ++x) {
            int py = 0;
            mapping_.PixelAt(x, 0, columns_[static_cast<std::size_t>(x)], py);
        }
        for (int y = 0; y < h; ++y) {
            auto* row = reinterpret_cast<std::uint32_t*>(view_.scanLine(y));
            int px = 0;
            int py = 0;
            mapping_.PixelAt(0, y, px, py);
            for (int x = 0; x < w; ++x) {
                px = columns_[static_cast<std::size_t>(x)];
                if (px < 0 || py < 0 || px >= width_ || py >= height_) {
                    row[x] = 0xFF202020u;
                    continue;
                }
                row[x] = Over(colours_[static_cast<std::size_t>(py) * width_ + px], Checker(x, y));
            }
        }
        view_.setDevicePixelRatio(ratio);
        viewValid_ = true;
    }
    QPainter painter(this);
    painter.drawImage(QPoint(0, 0), view_);
    if (!outline_) {
        return;
    }
    // The selected layer: its outline, a handle at each corner (dragging one scales the
    // layer) and its anchor point.
    painter.setRenderHint(QPainter::Antialiasing);
    QPolygonF quad;
    for (const CompositionPoint& corner : outline_->corners) {
        quad << WidgetPointOf(corner);
    }
    painter.setPen(QPen(QColor(80, 160, 255), 1.0));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolygon(quad);
    painter.setBrush(QColor(80, 160, 255));
    for (const QPointF& corner : quad) {
        painter.drawRect(QRectF(corner.x() - 3, corner.y() - 3, 6, 6));
    }
    const QPointF anchor = WidgetPointOf(outline_->anchor);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(255, 255, 255), 1.0));
    painter.drawEllipse(anchor, 5, 5);
    painter.drawLine(anchor - QPointF(8, 0), anchor + QPointF(8, 0));
    painter.drawLine(anchor - QPointF(0, 8), anchor + QPointF(0, 8));
}

void CanvasView::mouseMoveEvent(QMouseEvent* event) {
    if (panning_) {
        const QPoint device = DevicePixel(event->position());
        mapping_.SetOrigin(mapping_.OriginX() + device.x() - panFrom_.x(),
                           mapping_.OriginY() + device.y() - panFrom_.y());
        panFrom_ = device;
        fitted_ = true;
        Changed();
    }
    emit pointerMoved(PositionAt(event->position()));
    if (dragging_) {
        emit dragMoved(PositionAt(event->position()), event->modifiers());
    }
}

void CanvasView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::MiddleButton || (event->button() == Qt::LeftButton && spaceHeld_)) {
        panning_ = true;
        panFrom_ = DevicePixel(event->position());
        setCursor(Qt::ClosedHandCursor);
        return;
    }
    if (event->button() == Qt::LeftButton && (event->modifiers() & Qt::ControlModifier)) {
        emit originPicked(PositionAt(event->position()));
        return;
    }
    if (event->button() == Qt::LeftButton) {
        dragging_ = true;
        emit dragPressed(PositionAt(event->position()), event->modifiers());
    }
}

void CanvasView::mouseReleaseEvent(QMouseEvent* event) {
    if (panning_) {
        panning_ = false;
        setCursor(spaceHeld_ ? Qt::OpenHandCursor : Qt::CrossCursor);
        return;
    }
    if (dragging_ && event->button() == Qt::LeftButton) {
        dragging_ = false;
        emit dragReleased();
    }
}

void CanvasView::wheelEvent(QWheelEvent* event) {
    if (event->modifiers() & Qt::AltModifier) {
        // With Alt held some window systems turn the wheel into a horizontal one.
        const QPoint delta = event->angleDelta();
        const int turned = delta.y() != 0 ? delta.y() : delta.x();
        if (turned != 0) {
            emit scaleWheel(turned > 0 ? 1 : -1, event->modifiers());
        }
        event->accept();
        return;
    }
    const int steps = event->angleDelta().y() > 0 ? 1 : event->angleDelta().y() < 0 ? -1 : 0;
    if (steps != 0) {
        ZoomAroundDevice(mapping_.Step(steps), DevicePixel(event->position()));
        emit pointerMoved(PositionAt(event->position()));
    }
    event->accept();
}

void CanvasView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Space && !event->isAutoRepeat()) {
        spaceHeld_ = true;
        setCursor(Qt::OpenHandCursor);
        return;
    }
    QWidget::keyPressEvent(event);
}

void CanvasView::keyReleaseEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Space && !event->isAutoRepeat()) {
        spaceHeld_ = false;
        if (!panning_) {
            setCursor(Qt::CrossCursor);
        }
        return;
    }
    QWidget::keyReleaseEvent(event);
}

void CanvasView::leaveEvent(QEvent*) {
    emit pointerLeft();
}

} // namespace qzview
