#include "CanvasView.h"

#include <cmath>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include "PreviewPainter.h"
#include "ViewRefiner.h"

namespace qzview {

CanvasView::CanvasView(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumSize(160, 120);
    setCursor(Qt::CrossCursor);
    size_ = DeviceSize();
    refiner_ = std::make_unique<ViewRefiner>([this](std::uint64_t request, QImage view) {
        // On the refiner's thread: the view is handed to the canvas's.
        QMetaObject::invokeMethod(
            this, [this, request, view = std::move(view)] { Adopt(request, view); },
            Qt::QueuedConnection);
    });
}

CanvasView::~CanvasView() {
    refiner_.reset();
}

void CanvasView::SetScene(CanvasScene scene) {
    const bool resized = scene.width != scene_.width || scene.height != scene_.height ||
                         scene.pixelAspect != scene_.pixelAspect;
    scene_ = std::move(scene);
    mapping_.SetAspect(scene_.pixelAspect);
    if (resized && !fitted_) {
        FitWithoutChoosing();
    }
    Changed();
}

void CanvasView::SetHold(bool hold) {
    hold_ = hold;
    if (hold_) {
        refiner_->Cancel();
        started_ = 0;
    } else {
        Refine();
    }
}

QSize CanvasView::DeviceSize() const {
    const double ratio = devicePixelRatioF();
    return {std::max(1, static_cast<int>(std::lround(width() * ratio))),
            std::max(1, static_cast<int>(std::lround(height() * ratio)))};
}

bool CanvasView::ShowingPreview() const noexcept {
    return exactFor_ != request_ || exact_.size() != DeviceSize();
}

int CanvasView::RefinementsFinished() const noexcept {
    return refiner_->FinishedRenders();
}

void CanvasView::Refine() {
    if (Interacting() || !scene_.snapshot || started_ == request_ || !ShowingPreview()) {
        return;
    }
    started_ = request_;
    const QSize size = DeviceSize();
    refiner_->Start(request_, scene_, mapping_, size.width(), size.height());
}

void CanvasView::Adopt(std::uint64_t request, QImage view) {
    if (request != request_ || view.size() != DeviceSize()) {
        return; // made for a view that has changed since
    }
    exact_ = std::move(view);
    exact_.setDevicePixelRatio(devicePixelRatioF());
    exactFor_ = request;
    update();
    TellPreview();
}

void CanvasView::TellPreview() {
    const bool preview = ShowingPreview();
    if (preview != previewShown_) {
        previewShown_ = preview;
        emit previewChanged(preview);
    }
}

QPoint CanvasView::DevicePixel(const QPointF& point) const {
    const double ratio = devicePixelRatioF();
    return {static_cast<int>(std::floor(point.x() * ratio)),
            static_cast<int>(std::floor(point.y() * ratio))};
}

QPointF CanvasView::WidgetPointOf(const CompositionPoint& point) const {
    const double ratio = devicePixelRatioF();
    const auto [x, y] = mapping_.ToScreen(point);
    return {x / ratio, y / ratio};
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
    ++request_;
    viewValid_ = false;
    if (Interacting()) {
        // Whatever is under way is out of date; the preview follows the person.
        refiner_->Cancel();
        started_ = 0;
    }
    update();
    TellPreview();
    if (mapping_.Zoom() != toldZoom_) {
        toldZoom_ = mapping_.Zoom();
        emit zoomChanged(toldZoom_);
    }
    Refine();
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

void CanvasView::ZoomCentred(double zoom) {
    const QSize size = DeviceSize();
    mapping_.Centre(CanvasMapping::NearestLevel(zoom), scene_.width, scene_.height, size.width(),
                    size.height());
    fitted_ = true;
    Changed();
}

void CanvasView::FitWithoutChoosing() {
    const QSize size = DeviceSize();
    if (scene_.width > 0) {
        mapping_.Fit(scene_.width, scene_.height, size.width(), size.height());
    }
}

void CanvasView::FitToWindow() {
    FitWithoutChoosing();
    fitted_ = scene_.width > 0;
    Changed();
}

void CanvasView::resizeEvent(QResizeEvent*) {
    if (!fitted_) {
        FitWithoutChoosing();
    } else {
        // The composition point at the centre of the view stays there.
        const QSize now = DeviceSize();
        mapping_.KeepCentre(size_.width(), size_.height(), now.width(), now.height());
    }
    size_ = DeviceSize();
    Changed();
}

void CanvasView::ActualPixels() {
    const QSize size = DeviceSize();
    mapping_.Actual(scene_.width, scene_.height, size.width(), size.height());
    fitted_ = true;
    Changed();
}

void CanvasView::paintEvent(QPaintEvent*) {
    const QSize size = DeviceSize();
    const bool exact = !ShowingPreview();
    if (!exact && (!viewValid_ || view_.size() != size)) {
        if (view_.size() != size) {
            view_ = QImage(size, QImage::Format_RGB32);
        }
        // While the person interacts, the nearest pixel of the display images; filtered
        // once they let go, until the exact view arrives.
        PaintPreview(scene_, mapping_, !Interacting(), view_);
        view_.setDevicePixelRatio(devicePixelRatioF());
        viewValid_ = true;
    }
    QPainter painter(this);
    painter.drawImage(QPoint(0, 0), exact ? exact_ : view_);
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
    const CompositionPoint position = PositionAt(event->position());
    emit pointerMoved(position);
    if (dragging_) {
        emit dragMoved(position, event->modifiers());
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
        viewValid_ = false;
        update();
        Refine();
        return;
    }
    if (dragging_ && event->button() == Qt::LeftButton) {
        dragging_ = false;
        emit dragReleased();
        viewValid_ = false;
        update();
        Refine();
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
