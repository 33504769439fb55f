// A drawing surface on a Cairo context, with text set by Pango.
#pragma once

#include <cairo.h>
#include <pango/pangocairo.h>

#include <string>
#include <unordered_map>

#include "kitui/inkwell/SurfaceInterface.h"

namespace qzhost::inkwell {

class CairoSurface final : public kitui::inkwell::SurfaceInterface {
public:
    /// Draws on `cr` (which the surface references while it lives).
    explicit CairoSurface(cairo_t* cr);
    ~CairoSurface() override;
    CairoSurface(const CairoSurface&) = delete;
    CairoSurface& operator=(const CairoSurface&) = delete;

    void BeginDrawing() override;
    void EndDrawing() override;
    /// The current clip's bounding box in the current user units: a node whose rectangle
    /// lies outside the area being redrawn need not be drawn at all.
    kitui::ui::RectT<float> ClipExtents() const;
    void SetAntialiasing(int on) override;
    int GetAntialiasing() const override;
    kitui::inkwell::Transform GetTransform() const override;
    void Translate(float dx, float dy) override;
    void ClipToRect(const kitui::ui::RectT<float>& rect) override;
    void FillPath(const kitui::inkwell::PathRef& path, const kitui::inkwell::BrushRef& brush,
                  int fill_rule) override;
    void FillPath(const kitui::inkwell::PathRef& path, const kitui::inkwell::ShaderRef& shader,
                  int fill_rule) override;
    void StrokePath(const kitui::inkwell::PathRef& path,
                    const kitui::inkwell::PenRef& pen) override;
    /// Sets `text` in `box` and clips it to the box: every control's text (a static text,
    /// a button's title, a popup's value, an edit field's contents) is drawn here, so no
    /// text reaches past the box its control gives it.
    void DrawText(const kitcore::utility::UTF16String& text, const kitui::ui::RectT<float>& box,
                  const kitui::inkwell::ColorRGBA& color,
                  const kitui::inkwell::TextStyle& style) override;
    float MeasureText(const kitcore::utility::UTF16String& text,
                      const kitui::inkwell::TextStyle& style) override;
    void DrawPicture(const kitui::inkwell::PictureRef& picture,
                     const kitui::ui::PointT<float>& origin) override;

    /// How many brackets are open.
    int Depth() const noexcept { return depth_; }

private:
    /// A layout of `text` in `style`, for the context's current transform; the surface
    /// keeps it (do not release it).
    PangoLayout* MakeLayout(const kitcore::utility::UTF16String& text,
                            const kitui::inkwell::TextStyle& style);
    void ForgetLayouts() noexcept;

    // Text is set in one Pango context per surface, kept up to date with the Cairo
    // context's transform, and each text's shaped layout is kept for the next time the
    // same text is drawn in the same style: a panel redraws the same few texts over and
    // over. A layout is told when the context changed since it was shaped.
    struct KeptLayout {
        PangoLayout* layout = nullptr;
        guint serial = 0;
    };
    PangoContext* pango_ = nullptr;
    bool antialias_ = true;
    // The linear part of the transform that the context was last set to; translations do
    // not change how text is shaped, so moving from control to control changes nothing.
    double matrix_[4] = {0, 0, 0, 0};
    std::unordered_map<std::string, KeptLayout> layouts_;
    bool ReplayPath(const kitui::inkwell::PathRef& path, int fill_rule);

    cairo_t* cr_;
    int depth_ = 0;
};

} // namespace qzhost::inkwell
