#include "PanelWidget.h"

#include <algorithm>
#include <cmath>

#include <QPaintEvent>
#include <QPainter>

#include "kitui/ui/UI_Describable.h"

namespace qzview {

namespace {

/// The two numbers of the panel's description that give its minimum size.
class MinimumSize : public kitui::ui::UI_Description {
public:
    void SetInteger(const char* key, std::int64_t value) override {
        SetNumber(key, static_cast<double>(value));
    }
    void SetNumber(const char* key, double value) override {
        if (std::string_view(key) == "min_width") {
            width = value;
        } else if (std::string_view(key) == "min_height") {
            height = value;
        }
    }
    void SetText(const char*, const kitcore::utility::UTF16String&) override {}
    void SetTextList(const char*, const std::vector<kitcore::utility::UTF16String>&) override {}
    double width = 0;
    double height = 0;
};

kitui::ui::UI_Node* PanelOf(qzhost::TabFrame& frame) {
    return frame.UI_GetChildCount() > 0 ? frame.UI_GetChild(0) : nullptr;
}

} // namespace

PanelWidget::PanelWidget(qzhost::TabFrame& frame, double scale, QWidget* parent)
    : QWidget(parent), frame_(frame), scale_(scale) {
    setAttribute(Qt::WA_OpaquePaintEvent, false);
    setMouseTracking(false);
    const kitui::ui::RectT<float> bounds = frame_.UI_GetBounds();
    const double ratio = devicePixelRatioF();
    resize(static_cast<int>(std::ceil(bounds.width * scale_ / ratio)),
           static_cast<int>(std::ceil(bounds.height * scale_ / ratio)));
    FollowWidgetSize();
}

PanelWidget::~PanelWidget() = default;

void PanelWidget::FollowWidgetSize() {
    const double ratio = devicePixelRatioF();
    const int pixelWidth = std::max(1, static_cast<int>(std::lround(width() * ratio)));
    const int pixelHeight = std::max(1, static_cast<int>(std::lround(height() * ratio)));
    const kitui::ui::RectT<float> units{0, 0, static_cast<float>(pixelWidth / scale_),
                                        static_cast<float>(pixelHeight / scale_)};
    frame_.UI_SetBounds(units);
    if (kitui::ui::UI_Node* panel = PanelOf(frame_)) {
        panel->UI_SetBounds(units);
    }
    canvas_ = std::make_unique<qzhost::ImageCanvas>(pixelWidth, pixelHeight, scale_);
    RedrawAll();
}

void PanelWidget::FollowMinimumSize() {
    const auto* describable = dynamic_cast<const kitui::ui::UI_Describable*>(PanelOf(frame_));
    if (describable == nullptr) {
        return;
    }
    MinimumSize size;
    describable->UI_Describe(size);
    // The panel answers in device pixels: its layout size already multiplied by the scale
    // of its controls, which is the UI scale.
    const double ratio = devicePixelRatioF();
    const QSize minimum(static_cast<int>(std::ceil(size.width / ratio)),
                        static_cast<int>(std::ceil(size.height / ratio)));
    if (minimum != minimumSize()) {
        setMinimumSize(minimum);
    }
}

QRect PanelWidget::ToWidget(const kitui::ui::RectT<float>& units) const {
    const double factor = scale_ / devicePixelRatioF();
    const int x0 = static_cast<int>(std::floor(units.x * factor));
    const int y0 = static_cast<int>(std::floor(units.y * factor));
    const int x1 = static_cast<int>(std::ceil((units.x + units.width) * factor));
    const int y1 = static_cast<int>(std::ceil((units.y + units.height) * factor));
    return QRect(x0, y0, x1 - x0, y1 - y0);
}

bool PanelWidget::Flush() {
    if (!frame_.UI_HasInvalidArea()) {
        return false;
    }
    const std::vector<kitui::ui::RectT<float>> rects = frame_.UI_GetInvalidRects();
    frame_.UI_ClearInvalidArea();
    const double ratio = devicePixelRatioF();
    for (const auto& rect : rects) {
        const QRect area = ToWidget(rect);
        canvas_->RedrawArea(frame_, static_cast<int>(std::floor(area.x() * ratio)),
                            static_cast<int>(std::floor(area.y() * ratio)),
                            static_cast<int>(std::ceil(area.width() * ratio)),
                            static_cast<int>(std::ceil(area.height() * ratio)));
        update(area);
    }
    return true;
}

void PanelWidget::RedrawAll() {
    // The panel's minimum size comes with its layout; it is looked at again whenever the
    // whole panel is drawn (shown again, resized), not on every frame.
    FollowMinimumSize();
    frame_.UI_ClearInvalidArea();
    canvas_->RedrawArea(frame_, 0, 0, canvas_->PixelWidth(), canvas_->PixelHeight());
    update();
}

QImage PanelWidget::Picture() const {
    return QImage(canvas_->Data(), canvas_->PixelWidth(), canvas_->PixelHeight(), canvas_->Stride(),
                  QImage::Format_ARGB32_Premultiplied)
        .copy();
}

void PanelWidget::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    QImage image(canvas_->Data(), canvas_->PixelWidth(), canvas_->PixelHeight(), canvas_->Stride(),
                 QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(devicePixelRatioF());
    painter.setClipRegion(event->region());
    painter.drawImage(QPoint(0, 0), image);
    ++repaints_;
    emit painted();
}

void PanelWidget::resizeEvent(QResizeEvent*) {
    FollowWidgetSize();
}

} // namespace qzview
