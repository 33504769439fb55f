#include "PreviewPainter.h"

#include <cmath>

#include <QPainter>

#include "canvas/Checkerboard.h"

namespace qzview {

namespace {

/// One period of the checkerboard, drawn as a brush from the view's top-left corner.
const QBrush& CheckerBrush() {
    static const QBrush brush = [] {
        QImage tile(16, 16, QImage::Format_RGB32);
        for (int y = 0; y < 16; ++y) {
            for (int x = 0; x < 16; ++x) {
                tile.setPixel(x, y, Checker(x, y));
            }
        }
        return QBrush(tile);
    }();
    return brush;
}

} // namespace

void PaintPreview(const CanvasScene& scene, const CanvasMapping& mapping, bool smooth,
                  QImage& view) {
    view.fill(kOutside);
    const double zoom = mapping.Zoom();
    const QRectF composition(mapping.OriginX(), mapping.OriginY(), scene.width * zoom,
                             scene.height * zoom);
    QPainter painter(&view);
    painter.fillRect(composition, CheckerBrush());
    painter.setClipRect(composition);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, smooth);
    const QTransform toView(zoom, 0, 0, zoom, mapping.OriginX(), mapping.OriginY());
    for (const PreviewLayer& layer : scene.layers) {
        const Affine& m = layer.transform;
        if (!layer.pyramid || layer.opacity <= 0 || !m.Inverse()) {
            continue;
        }
        // Screen pixels per layer pixel, along the layer's more shrunk axis.
        const double scale = zoom * std::min(std::hypot(m.a, m.b), std::hypot(m.c, m.d));
        const int level = layer.pyramid->LevelFor(scale);
        const double step = std::ldexp(1.0, level);
        const QTransform toComposition(m.a, m.b, m.c, m.d, m.e, m.f);
        painter.setTransform(QTransform::fromScale(step, step) * toComposition * toView);
        painter.setOpacity(layer.opacity);
        painter.drawImage(QPointF(0, 0), layer.pyramid->Level(level));
    }
}

} // namespace qzview
