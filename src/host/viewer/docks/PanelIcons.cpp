#include "PanelIcons.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace qzview {

namespace {

/// Icons are drawn at twice their size, for high-density screens.
constexpr int kIconSize = 16;
constexpr qreal kDensity = 2.0;

QPixmap BlankIcon() {
    QPixmap pixmap(static_cast<int>(kIconSize * kDensity), static_cast<int>(kIconSize * kDensity));
    pixmap.setDevicePixelRatio(kDensity);
    pixmap.fill(Qt::transparent);
    return pixmap;
}

QPixmap EyePixmap(bool open) {
    QPixmap pixmap = BlankIcon();
    QPainter paint(&pixmap);
    paint.setRenderHint(QPainter::Antialiasing);
    const QColor ink(40, 40, 40);
    paint.setPen(QPen(ink, 1.4));
    // The lids: two arcs meeting at the corners of the eye.
    QPainterPath lids;
    lids.moveTo(1.5, 8);
    lids.quadTo(8, open ? 1 : 10.5, 14.5, 8);
    if (open) {
        lids.quadTo(8, 15, 1.5, 8);
    }
    paint.drawPath(lids);
    if (open) {
        paint.setBrush(ink);
        paint.drawEllipse(QPointF(8, 8), 2.3, 2.3);
    } else {
        // Lashes under the closed lid.
        for (const double x : {4.5, 8.0, 11.5}) {
            paint.drawLine(QPointF(x, 9.8), QPointF(x + (x - 8) * 0.15, 12.5));
        }
    }
    return pixmap;
}

QPixmap ChainPixmap(bool joined) {
    QPixmap pixmap = BlankIcon();
    QPainter paint(&pixmap);
    paint.setRenderHint(QPainter::Antialiasing);
    paint.setPen(QPen(joined ? QColor(30, 90, 170) : QColor(120, 120, 120), 1.6));
    paint.setBrush(Qt::NoBrush);
    // Two links on a diagonal, overlapping when joined, apart when not.
    const double gap = joined ? 0.0 : 2.0;
    paint.translate(8, 8);
    paint.rotate(-45);
    paint.drawRoundedRect(QRectF(-7.0 - gap, -2.6, 8.0, 5.2), 2.6, 2.6);
    paint.drawRoundedRect(QRectF(-1.0 + gap, -2.6, 8.0, 5.2), 2.6, 2.6);
    return pixmap;
}

} // namespace

QIcon EyeIcon(bool open) {
    return QIcon(EyePixmap(open));
}

QIcon LinkIcon() {
    QIcon icon;
    icon.addPixmap(ChainPixmap(true), QIcon::Normal, QIcon::On);
    icon.addPixmap(ChainPixmap(false), QIcon::Normal, QIcon::Off);
    return icon;
}

} // namespace qzview
