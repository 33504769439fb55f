#include "qzhost/PanelRenderer.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "qzhost/ImageCanvas.h"

namespace qzhost {

namespace {

int PixelsFor(float units, double scale) {
    const double pixels = std::ceil(static_cast<double>(units) * scale - 1e-9);
    if (!(pixels < 32767.0)) {
        return 32767;
    }
    return std::max(1, static_cast<int>(pixels));
}

} // namespace

RenderedImage RenderNode(kitui::ui::UI_Node& root, double scale) {
    if (!(scale > 0.0)) {
        throw std::invalid_argument("render: scale must be above 0");
    }
    const kitui::ui::RectT<float> local = root.UI_GetLocalRectF();
    ImageCanvas canvas(PixelsFor(local.width, scale), PixelsFor(local.height, scale), scale);
    kitui::inkwell::Inkwell& ink = canvas.GetInkwell();
    ink.GetSurface()->BeginDrawing();
    kitui::ui::UI_Node::UI_ClipToRect(local, &ink);
    root.UI_Draw(&ink);
    ink.GetSurface()->EndDrawing();
    return canvas.Snapshot();
}

RenderedImage RenderNodeToPng(kitui::ui::UI_Node& root, double scale, const std::string& png_path) {
    RenderedImage image = RenderNode(root, scale);
    image.WritePng(png_path);
    return image;
}

} // namespace qzhost
