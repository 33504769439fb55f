#include "InfoPal/controls/UI_SwatchRect.h"

#include <algorithm>
#include <cmath>

#include "kitui/inkwell/PathInterface.h"
#include "kitui/inkwell/SupplierInterface.h"
#include "kitui/inkwell/SurfaceInterface.h"
#include "kitui/ui/Theme.h"

namespace kitui::controls {

namespace {

using kitui::inkwell::kFillRuleWinding;
using kitui::ui::PointT;
using kitui::ui::RectT;

constexpr float kFrameWidth = 2.0f;

PointT<float> Add(PointT<float> a, PointT<float> b) {
    return {a.x + b.x, a.y + b.y};
}
PointT<float> Scale(PointT<float> a, float k) {
    return {a.x * k, a.y * k};
}

bool NearlyEqual(double a, double b) {
    return a == b || std::max(std::fabs(a), std::fabs(b)) * 1e-12 > std::fabs(a - b);
}

} // namespace

UI_SwatchRect::UI_SwatchRect() = default;
UI_SwatchRect::~UI_SwatchRect() = default;

void UI_SwatchRect::UI_Draw(kitui::inkwell::Inkwell* ink) {
    if (ink == nullptr) {
        return;
    }
    DrawSwatch(UI_GetLocalRectF(), *ink, color);
}

void DrawSwatch(const RectT<float>& bounds, kitui::inkwell::Inkwell& ink,
                kitui::inkwell::ColorRGBA c) {
    kitui::inkwell::SupplierInterface& supplier = *ink.GetSupplier();
    kitui::inkwell::SurfaceInterface& surface = *ink.GetSurface();
    surface.BeginDrawing();
    kitui::ui::UI_Node::UI_ClipToRect(bounds, &ink);
    surface.SetAntialiasing(0);

    // A spans the short side, B the long side.
    const PointT<float> origin{bounds.x, bounds.y};
    const bool wide = bounds.width > bounds.height;
    const PointT<float> across =
        wide ? PointT<float>{0, bounds.height} : PointT<float>{bounds.width, 0};
    const PointT<float> along =
        wide ? PointT<float>{bounds.width, 0} : PointT<float>{0, bounds.height};
    const float short_side = wide ? bounds.height : bounds.width;

    const kitui::inkwell::Transform transform = surface.GetTransform();
    // The sum of the squares of the first three coefficients: 1 on an unmagnified surface.
    const double s =
        transform[0] * transform[0] + transform[1] * transform[1] + transform[2] * transform[2];
    const bool thin = 1.0 - s > -1e-12 && NearlyEqual(short_side, 2.0);

    if (thin) {
        for (const float quarter : {0.25f, 0.75f}) {
            const PointT<float> start = Add(origin, Scale(across, quarter));
            auto path = supplier.NewPath();
            path->MoveTo(start);
            path->LineTo(Add(start, along));
            surface.StrokePath(path, supplier.NewPen(c, 1.0f));
        }
    } else {
        const PointT<float> half = Scale(across, 0.5f);
        const PointT<float> middle = Add(origin, half);
        const PointT<float> first_size = Add(half, along);
        const PointT<float> second_size = Add(middle, along);
        const bool shaders = supplier.UseShadersForFills();
        const struct {
            PointT<float> at, size, shade_from, shade_to;
        } halves[2] = {{origin, first_size, origin, middle}, {middle, second_size, middle, across}};
        for (const auto& h : halves) {
            auto path = supplier.NewPath();
            path->AddRect(RectT<float>{h.at.x, h.at.y, h.size.x, h.size.y});
            if (shaders) {
                surface.FillPath(path, supplier.NewLinearShader(h.shade_from, h.shade_to, c, c),
                                 kFillRuleWinding);
            } else {
                surface.FillPath(path, supplier.NewBrush(c), kFillRuleWinding);
            }
        }
    }

    auto frame = supplier.NewPath();
    frame->AddRect(bounds);
    surface.StrokePath(
        frame,
        supplier.NewPen(kitui::ui::GetColor(kitui::ui::color_id::kSwatchFrame), kFrameWidth));
    surface.EndDrawing();
}

} // namespace kitui::controls
