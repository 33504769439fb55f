#include "ReadyEvent.h"

#include <array>
#include <cmath>
#include <optional>

#include <QWidget>

#include "canvas/CanvasView.h"
#include "log/EventLog.h"

namespace qzview {

void LogReadyEvent(EventLog& log, const QWidget& window, const CanvasView& canvas,
                   const QWidget* panel) {
    const QRect frame = window.frameGeometry();
    const double ratio = window.devicePixelRatioF();
    const QPoint canvasAt = canvas.mapToGlobal(QPoint(0, 0));
    const CanvasMapping& mapping = canvas.Mapping();
    // The panel's controls are reported in panel units by the panel events; its place
    // turns them into screen pixels.
    std::optional<std::array<int, 4>> panelRect;
    if (panel != nullptr && panel->isVisible()) {
        const QPoint panelAt = panel->mapToGlobal(QPoint(0, 0));
        panelRect = std::array<int, 4>{static_cast<int>(panelAt.x() * ratio),
                                       static_cast<int>(panelAt.y() * ratio),
                                       static_cast<int>(std::lround(panel->width() * ratio)),
                                       static_cast<int>(std::lround(panel->height() * ratio))};
    }
    log.Ready({static_cast<int>(frame.x() * ratio), static_cast<int>(frame.y() * ratio),
               static_cast<int>(frame.width() * ratio), static_cast<int>(frame.height() * ratio)},
              static_cast<int>(canvasAt.x() * ratio) + mapping.OriginX(),
              static_cast<int>(canvasAt.y() * ratio) + mapping.OriginY(), mapping.Zoom(),
              panelRect);
}

} // namespace qzview
