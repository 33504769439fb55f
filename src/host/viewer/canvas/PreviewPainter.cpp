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

/// Composition pixel heights per layer pixel along the layer's more shrunk axis, where the
/// layer is shown largest, a composition pixel drawn `aspect` heights wide: for a layer
/// seen in perspective, the most of that at its corners (none behind the camera; 0 when
/// one is, which picks full resolution).
double ShownScale(const Projective& transform, int width, int height, double aspect) {
    if (transform.IsAffine()) {
        const Affine m = transform.ToAffine();
        return std::min(std::hypot(m.a * aspect, m.b), std::hypot(m.c * aspect, m.d));
    }
    const Matrix3& h = transform.m;
    double most = 0;
    for (const auto& [u, v] : {std::array<double, 2>{0, 0}, std::array<double, 2>{1.0 * width, 0},
                               std::array<double, 2>{1.0 * width, 1.0 * height},
                               std::array<double, 2>{0, 1.0 * height}}) {
        const auto [xw, yw, w] = transform.Homogeneous(u, v);
        if (!(w > 0)) {
            return 0;
        }
        const double x = xw / w;
        const double y = yw / w;
        // The derivatives of the seen point along u and along v.
        const double alongU =
            std::hypot((h[0][0] - x * h[2][0]) * aspect, h[1][0] - y * h[2][0]) / w;
        const double alongV =
            std::hypot((h[0][1] - x * h[2][1]) * aspect, h[1][1] - y * h[2][1]) / w;
        most = std::max(most, std::min(alongU, alongV));
    }
    return most;
}

} // namespace

void PaintPreview(const CanvasScene& scene, const CanvasMapping& mapping, bool smooth,
                  QImage& view) {
    view.fill(kOutside);
    const double zoom = mapping.Zoom();
    const double across = mapping.ScaleX();
    const QRectF composition(mapping.OriginX(), mapping.OriginY(), scene.width * across,
                             scene.height * zoom);
    QPainter painter(&view);
    painter.fillRect(composition, CheckerBrush());
    painter.setClipRect(composition);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, smooth);
    const QTransform toView(across, 0, 0, zoom, mapping.OriginX(), mapping.OriginY());
    for (const PreviewLayer& layer : scene.layers) {
        const Projective& m = layer.transform;
        if (!layer.pyramid || layer.opacity <= 0 || !m.Inverse()) {
            continue;
        }
        const QImage& full = layer.pyramid->Level(0);
        const double scale = zoom * ShownScale(m, full.width(), full.height(), mapping.Aspect());
        const int level = scale > 0 ? layer.pyramid->LevelFor(scale) : 0;
        const double step = std::ldexp(1.0, level);
        // Qt's projective terms are the third column of its row-vector matrix; it draws
        // only the part of the layer in front of the camera.
        const Matrix3& h = m.m;
        const QTransform toComposition(h[0][0], h[1][0], h[2][0], h[0][1], h[1][1], h[2][1],
                                       h[0][2], h[1][2], h[2][2]);
        painter.setTransform(QTransform::fromScale(step, step) * toComposition * toView);
        painter.setOpacity(layer.opacity);
        painter.drawImage(QPointF(0, 0), layer.pyramid->Level(level));
    }
}

} // namespace qzview
