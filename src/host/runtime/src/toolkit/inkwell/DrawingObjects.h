// The drawing objects that the runtime's supplier makes: a path that records its figures
// and replays them into a Cairo context, and plain pens, brushes, shaders and pictures.
#pragma once

#include <cairo.h>

#include <cstdint>
#include <vector>

#include "kitui/inkwell/BrushInterface.h"
#include "kitui/inkwell/PathInterface.h"
#include "kitui/inkwell/PenInterface.h"
#include "kitui/inkwell/PictureInterface.h"
#include "kitui/inkwell/ShaderInterface.h"

namespace qzhost::inkwell {

using kitui::inkwell::ColorRGBA;
using kitui::ui::PointT;
using kitui::ui::RectT;

class RecordedPath final : public kitui::inkwell::PathInterface {
public:
    using kitui::inkwell::PathInterface::AddRect;
    void MoveTo(const PointT<float>& point) override;
    void LineTo(const PointT<float>& point) override;
    void AddRect(const RectT<float>& rect) override;
    void Close() override;
    bool IsEmpty() const override { return elements_.empty(); }

    /// Makes the recorded figures the current path of `cr` (replacing its path).
    void Replay(cairo_t* cr) const;

private:
    enum class Kind { kMove, kLine, kRect, kClose };
    struct Element {
        Kind kind;
        RectT<float> data; // x, y of a point; the whole rectangle of kRect
    };
    std::vector<Element> elements_;
    bool hasCurrentPoint_ = false;
};

class SolidPen final : public kitui::inkwell::PenInterface {
public:
    SolidPen(const ColorRGBA& color, float width) : color_(color), width_(width) {}
    ColorRGBA GetColor() const override { return color_; }
    float GetWidth() const override { return width_; }

private:
    ColorRGBA color_;
    float width_;
};

class SolidBrush final : public kitui::inkwell::BrushInterface {
public:
    explicit SolidBrush(const ColorRGBA& color) : color_(color) {}
    ColorRGBA GetColor() const override { return color_; }

private:
    ColorRGBA color_;
};

class LinearShader final : public kitui::inkwell::ShaderInterface {
public:
    LinearShader(const PointT<float>& start, const PointT<float>& end, const ColorRGBA& start_color,
                 const ColorRGBA& end_color)
        : start_(start), end_(end), startColor_(start_color), endColor_(end_color) {}
    PointT<float> GetStart() const override { return start_; }
    PointT<float> GetEnd() const override { return end_; }
    ColorRGBA GetStartColor() const override { return startColor_; }
    ColorRGBA GetEndColor() const override { return endColor_; }

private:
    PointT<float> start_;
    PointT<float> end_;
    ColorRGBA startColor_;
    ColorRGBA endColor_;
};

/// A picture held as a Cairo image surface (premultiplied ARGB32) beside its original
/// pixels.
class ImagePicture final : public kitui::inkwell::PictureInterface {
public:
    /// Throws std::invalid_argument for a size below 1, a scale not above 0 or a stride
    /// below the width.
    ImagePicture(int width, int height, float scale, const std::uint32_t* pixels,
                 std::size_t stride);
    ~ImagePicture() override;
    ImagePicture(const ImagePicture&) = delete;
    ImagePicture& operator=(const ImagePicture&) = delete;

    int GetPixelWidth() const override { return width_; }
    int GetPixelHeight() const override { return height_; }
    float GetScale() const override { return scale_; }
    std::uint32_t GetPixel(int x, int y) const override;

    cairo_surface_t* Surface() const noexcept { return surface_; }

private:
    int width_;
    int height_;
    float scale_;
    std::vector<std::uint32_t> pixels_;
    cairo_surface_t* surface_ = nullptr;
};

} // namespace qzhost::inkwell
