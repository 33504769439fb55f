#include "CairoSurface.h"

#include <string>

#include "DrawingObjects.h"
#include "qzhost/ToolkitSettings.h"
#include "qzhost/UnicodeText.h"

namespace qzhost::inkwell {

namespace {

/// The host's user-interface font.
constexpr const char* kFontFamily = "DejaVu Sans";

void SetSource(cairo_t* cr, const kitui::inkwell::ColorRGBA& c) {
    cairo_set_source_rgba(cr, c.r, c.g, c.b, c.a);
}

} // namespace

CairoSurface::CairoSurface(cairo_t* cr) : cr_(cairo_reference(cr)) {}

CairoSurface::~CairoSurface() {
    while (depth_ > 0) {
        EndDrawing();
    }
    ForgetLayouts();
    if (pango_ != nullptr) {
        g_object_unref(pango_);
    }
    cairo_destroy(cr_);
}

void CairoSurface::ForgetLayouts() noexcept {
    for (auto& [key, kept] : layouts_) {
        g_object_unref(kept.layout);
    }
    layouts_.clear();
}

void CairoSurface::BeginDrawing() {
    cairo_save(cr_);
    ++depth_;
}

kitui::ui::RectT<float> CairoSurface::ClipExtents() const {
    double x1 = 0;
    double y1 = 0;
    double x2 = 0;
    double y2 = 0;
    cairo_clip_extents(cr_, &x1, &y1, &x2, &y2);
    return {static_cast<float>(x1), static_cast<float>(y1), static_cast<float>(x2 - x1),
            static_cast<float>(y2 - y1)};
}

void CairoSurface::EndDrawing() {
    // An unmatched close would put the Cairo context in an error state for good.
    if (depth_ == 0) {
        return;
    }
    cairo_restore(cr_);
    --depth_;
}

void CairoSurface::SetAntialiasing(int on) {
    cairo_set_antialias(cr_, on != 0 ? CAIRO_ANTIALIAS_DEFAULT : CAIRO_ANTIALIAS_NONE);
}

int CairoSurface::GetAntialiasing() const {
    return cairo_get_antialias(cr_) != CAIRO_ANTIALIAS_NONE ? 1 : 0;
}

kitui::inkwell::Transform CairoSurface::GetTransform() const {
    cairo_matrix_t m;
    cairo_get_matrix(cr_, &m);
    return kitui::inkwell::Transform{{m.xx, m.yx, m.xy, m.yy, m.x0, m.y0}};
}

void CairoSurface::Translate(float dx, float dy) {
    cairo_translate(cr_, dx, dy);
}

void CairoSurface::ClipToRect(const kitui::ui::RectT<float>& rect) {
    cairo_new_path(cr_);
    cairo_rectangle(cr_, rect.x, rect.y, rect.width, rect.height);
    cairo_clip(cr_);
}

bool CairoSurface::ReplayPath(const kitui::inkwell::PathRef& path, int fill_rule) {
    const auto* recorded = dynamic_cast<const RecordedPath*>(path.get());
    if (recorded == nullptr) {
        return false;
    }
    recorded->Replay(cr_);
    cairo_set_fill_rule(cr_, fill_rule == kitui::inkwell::kFillRuleEvenOdd
                                 ? CAIRO_FILL_RULE_EVEN_ODD
                                 : CAIRO_FILL_RULE_WINDING);
    return true;
}

void CairoSurface::FillPath(const kitui::inkwell::PathRef& path,
                            const kitui::inkwell::BrushRef& brush, int fill_rule) {
    if (!brush || !ReplayPath(path, fill_rule)) {
        return;
    }
    SetSource(cr_, brush->GetColor());
    cairo_fill(cr_);
}

void CairoSurface::FillPath(const kitui::inkwell::PathRef& path,
                            const kitui::inkwell::ShaderRef& shader, int fill_rule) {
    if (!shader || !ReplayPath(path, fill_rule)) {
        return;
    }
    const kitui::ui::PointT<float> start = shader->GetStart();
    const kitui::ui::PointT<float> end = shader->GetEnd();
    const kitui::inkwell::ColorRGBA c0 = shader->GetStartColor();
    const kitui::inkwell::ColorRGBA c1 = shader->GetEndColor();
    cairo_pattern_t* pattern = cairo_pattern_create_linear(start.x, start.y, end.x, end.y);
    cairo_pattern_add_color_stop_rgba(pattern, 0.0, c0.r, c0.g, c0.b, c0.a);
    cairo_pattern_add_color_stop_rgba(pattern, 1.0, c1.r, c1.g, c1.b, c1.a);
    cairo_pattern_set_extend(pattern, CAIRO_EXTEND_PAD);
    cairo_set_source(cr_, pattern);
    cairo_fill(cr_);
    cairo_pattern_destroy(pattern);
}

void CairoSurface::StrokePath(const kitui::inkwell::PathRef& path,
                              const kitui::inkwell::PenRef& pen) {
    if (!pen || !ReplayPath(path, kitui::inkwell::kFillRuleWinding)) {
        return;
    }
    SetSource(cr_, pen->GetColor());
    cairo_set_line_width(cr_, pen->GetWidth());
    cairo_stroke(cr_);
}

namespace {

/// Layouts kept per surface before the oldest are let go (all at once: the texts of a
/// panel fit many times over).
constexpr std::size_t kMaxKeptLayouts = 512;

/// Whether the glyphs of `ink` (a layout's ink rectangle in Pango units), set with the
/// layout's origin at (originX, originY), lie inside `box`.
bool InkFitsBox(const PangoRectangle& ink, double originX, double originY,
                const kitui::ui::RectT<float>& box) {
    const double left = originX + static_cast<double>(ink.x) / PANGO_SCALE;
    const double top = originY + static_cast<double>(ink.y) / PANGO_SCALE;
    const double right = left + static_cast<double>(ink.width) / PANGO_SCALE;
    const double bottom = top + static_cast<double>(ink.height) / PANGO_SCALE;
    return left >= box.x && top >= box.y && right <= static_cast<double>(box.x) + box.width &&
           bottom <= static_cast<double>(box.y) + box.height;
}

void SetFontOptions(PangoContext* context, bool antialias) {
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_antialias(options,
                                     antialias ? CAIRO_ANTIALIAS_GRAY : CAIRO_ANTIALIAS_NONE);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(context, options);
    cairo_font_options_destroy(options);
}

} // namespace

PangoLayout* CairoSurface::MakeLayout(const kitcore::utility::UTF16String& text,
                                      const kitui::inkwell::TextStyle& style) {
    const bool antialias = ToolkitSettings::Get().TextAntialiasing();
    if (pango_ == nullptr) {
        pango_ = pango_cairo_create_context(cr_);
        antialias_ = antialias;
        SetFontOptions(pango_, antialias_);
    } else if (antialias != antialias_) {
        antialias_ = antialias;
        SetFontOptions(pango_, antialias_);
    }
    cairo_matrix_t transform;
    cairo_get_matrix(cr_, &transform);
    if (transform.xx != matrix_[0] || transform.yx != matrix_[1] || transform.xy != matrix_[2] ||
        transform.yy != matrix_[3]) {
        matrix_[0] = transform.xx;
        matrix_[1] = transform.yx;
        matrix_[2] = transform.xy;
        matrix_[3] = transform.yy;
        const PangoMatrix linear = {transform.xx, transform.xy, transform.yx, transform.yy, 0, 0};
        pango_context_set_matrix(pango_, &linear);
    }

    std::string key = qzhost::strings::Utf16ToUtf8(std::u16string_view(text.data(), text.size()));
    const std::size_t textSize = key.size();
    key.push_back('\0');
    key.push_back(style.bold ? 'b' : 'n');
    key.push_back(style.underline ? 'u' : 'n');
    key.append(reinterpret_cast<const char*>(&style.size), sizeof style.size);

    const guint serial = pango_context_get_serial(pango_);
    auto found = layouts_.find(key);
    if (found != layouts_.end()) {
        if (found->second.serial != serial) {
            pango_layout_context_changed(found->second.layout);
            found->second.serial = serial;
        }
        return found->second.layout;
    }
    if (layouts_.size() >= kMaxKeptLayouts) {
        ForgetLayouts();
    }

    PangoLayout* layout = pango_layout_new(pango_);
    PangoFontDescription* font = pango_font_description_new();
    pango_font_description_set_family(font, kFontFamily);
    pango_font_description_set_weight(font, style.bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_font_description_set_absolute_size(font, style.size * PANGO_SCALE);
    pango_layout_set_font_description(layout, font);
    pango_font_description_free(font);

    pango_layout_set_single_paragraph_mode(layout, TRUE);
    pango_layout_set_text(layout, key.data(), static_cast<int>(textSize));
    if (style.underline) {
        PangoAttrList* attributes = pango_attr_list_new();
        pango_attr_list_insert(attributes, pango_attr_underline_new(PANGO_UNDERLINE_SINGLE));
        pango_layout_set_attributes(layout, attributes);
        pango_attr_list_unref(attributes);
    }
    layouts_.emplace(std::move(key), KeptLayout{layout, serial});
    return layout;
}

void CairoSurface::DrawText(const kitcore::utility::UTF16String& text,
                            const kitui::ui::RectT<float>& box,
                            const kitui::inkwell::ColorRGBA& color,
                            const kitui::inkwell::TextStyle& style) {
    if (text.empty()) {
        return;
    }
    PangoLayout* layout = MakeLayout(text, style);
    PangoRectangle ink;
    PangoRectangle logical;
    pango_layout_get_extents(layout, &ink, &logical);
    const double width = static_cast<double>(logical.width) / PANGO_SCALE;
    const double height = static_cast<double>(logical.height) / PANGO_SCALE;
    double x = box.x;
    if (style.alignment == kitui::inkwell::TextStyle::kCenter) {
        x = box.x + (box.width - width) / 2.0;
    } else if (style.alignment == kitui::inkwell::TextStyle::kRight) {
        x = box.x + box.width - width;
    }
    const double y = box.y + (box.height - height) / 2.0;
    // Where the layout's origin goes: its logical rectangle's corner at (x, y).
    const double originX = x - static_cast<double>(logical.x) / PANGO_SCALE;
    const double originY = y - static_cast<double>(logical.y) / PANGO_SCALE;
    cairo_save(cr_);
    cairo_new_path(cr_);
    // Text never leaves its box: a text too long for it (or glyphs reaching beyond it) is
    // cut at the box's edges. Text that fits, nearly all of it, sets no clip.
    if (!InkFitsBox(ink, originX, originY, box)) {
        cairo_rectangle(cr_, box.x, box.y, box.width, box.height);
        cairo_clip(cr_);
    }
    cairo_move_to(cr_, originX, originY);
    SetSource(cr_, color);
    pango_cairo_show_layout(cr_, layout);
    cairo_restore(cr_);
}

float CairoSurface::MeasureText(const kitcore::utility::UTF16String& text,
                                const kitui::inkwell::TextStyle& style) {
    if (text.empty()) {
        return 0.0f;
    }
    PangoLayout* layout = MakeLayout(text, style);
    PangoRectangle logical;
    pango_layout_get_extents(layout, nullptr, &logical);
    return static_cast<float>(logical.width) / PANGO_SCALE;
}

void CairoSurface::DrawPicture(const kitui::inkwell::PictureRef& picture,
                               const kitui::ui::PointT<float>& origin) {
    if (!picture) {
        return;
    }
    cairo_save(cr_);
    cairo_translate(cr_, origin.x, origin.y);
    const double scale = picture->GetScale();
    cairo_scale(cr_, 1.0 / scale, 1.0 / scale);
    cairo_surface_t* source = nullptr;
    if (const auto* image = dynamic_cast<const ImagePicture*>(picture.get())) {
        source = cairo_surface_reference(image->Surface());
    } else {
        // A picture from elsewhere: copy its pixels.
        const int w = picture->GetPixelWidth();
        const int h = picture->GetPixelHeight();
        if (w > 0 && h > 0) {
            std::vector<std::uint32_t> pixels(static_cast<std::size_t>(w) * h);
            for (int y = 0; y < h; ++y) {
                for (int x = 0; x < w; ++x) {
                    pixels[static_cast<std::size_t>(y) * w + x] = picture->GetPixel(x, y);
                }
            }
            const ImagePicture copy(w, h, static_cast<float>(scale), pixels.data(),
                                    static_cast<std::size_t>(w));
            source = cairo_surface_reference(copy.Surface());
        }
    }
    if (source != nullptr) {
        cairo_set_source_surface(cr_, source, 0.0, 0.0);
        cairo_pattern_set_filter(cairo_get_source(cr_), CAIRO_FILTER_GOOD);
        cairo_new_path(cr_);
        cairo_rectangle(cr_, 0.0, 0.0, picture->GetPixelWidth(), picture->GetPixelHeight());
        cairo_fill(cr_);
        cairo_surface_destroy(source);
    }
    cairo_restore(cr_);
}

} // namespace qzhost::inkwell
