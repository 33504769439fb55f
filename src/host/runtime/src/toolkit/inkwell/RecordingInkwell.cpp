#include "qzhost/RecordingInkwell.h"

#include <boost/make_shared.hpp>

#include <algorithm>
#include <iterator>
#include <string_view>

#include "kitui/inkwell/BrushInterface.h"
#include "kitui/inkwell/PathInterface.h"
#include "kitui/inkwell/PenInterface.h"
#include "kitui/inkwell/ShaderInterface.h"
#include "kitui/inkwell/SupplierInterface.h"
#include "kitui/inkwell/SurfaceInterface.h"
#include "qzhost/UnicodeText.h"

namespace qzhost {

// The recorder's pieces, in a named namespace: the class's Impl holds them.
namespace recording {

using kitui::inkwell::BrushRef;
using kitui::inkwell::ColorRGBA;
using kitui::inkwell::PathRef;
using kitui::inkwell::PenRef;
using kitui::inkwell::PictureRef;
using kitui::inkwell::ShaderRef;
using kitui::ui::PointT;
using kitui::ui::RectT;

// What the recorder keeps; shared by its supplier and surface, which may outlive it
// through handles that someone copied.
struct Log {
    std::vector<DrawingCall> calls;
    int shaderQueries = 0;
};

// A path that writes down each call and makes it on a path of the target's supplier,
// which the target's surface draws.
class RecordingPath final : public kitui::inkwell::PathInterface {
public:
    explicit RecordingPath(PathRef inner) : inner_(std::move(inner)) {}
    using kitui::inkwell::PathInterface::AddRect;

    void MoveTo(const PointT<float>& point) override {
        elements_.push_back({RecordedPathElement::Kind::kMoveTo, point, {}});
        inner_->MoveTo(point);
    }
    void LineTo(const PointT<float>& point) override {
        elements_.push_back({RecordedPathElement::Kind::kLineTo, point, {}});
        inner_->LineTo(point);
    }
    void AddRect(const RectT<float>& rect) override {
        elements_.push_back({RecordedPathElement::Kind::kRect, {}, rect});
        inner_->AddRect(rect);
    }
    void Close() override {
        elements_.push_back({RecordedPathElement::Kind::kClose, {}, {}});
        inner_->Close();
    }
    bool IsEmpty() const override { return inner_->IsEmpty(); }

    const PathRef& Inner() const noexcept { return inner_; }
    const std::vector<RecordedPathElement>& Elements() const noexcept { return elements_; }

private:
    PathRef inner_;
    std::vector<RecordedPathElement> elements_;
};

class RecordingSupplier final : public kitui::inkwell::SupplierInterface {
public:
    RecordingSupplier(kitui::inkwell::SupplierRef inner, std::shared_ptr<Log> log)
        : inner_(std::move(inner)), log_(std::move(log)) {}

    PathRef NewPath() override { return boost::make_shared<RecordingPath>(inner_->NewPath()); }
    PenRef NewPen(const ColorRGBA& color, float width) override {
        return inner_->NewPen(color, width);
    }
    BrushRef NewBrush(const ColorRGBA& color) override { return inner_->NewBrush(color); }
    ShaderRef NewLinearShader(const PointT<float>& start, const PointT<float>& end,
                              const ColorRGBA& start_color, const ColorRGBA& end_color) override {
        return inner_->NewLinearShader(start, end, start_color, end_color);
    }
    PictureRef NewPicture(int width, int height, float scale, const std::uint32_t* pixels,
                          std::size_t stride) override {
        return inner_->NewPicture(width, height, scale, pixels, stride);
    }
    bool UseShadersForFills() const override {
        ++log_->shaderQueries;
        return inner_->UseShadersForFills();
    }

private:
    kitui::inkwell::SupplierRef inner_;
    std::shared_ptr<Log> log_;
};

class RecordingSurface final : public kitui::inkwell::SurfaceInterface {
public:
    RecordingSurface(kitui::inkwell::SurfaceRef inner, std::shared_ptr<Log> log)
        : inner_(std::move(inner)), log_(std::move(log)) {}

    void BeginDrawing() override {
        Record(DrawingCall::Kind::kBeginDrawing);
        inner_->BeginDrawing();
    }
    void EndDrawing() override {
        Record(DrawingCall::Kind::kEndDrawing);
        inner_->EndDrawing();
    }
    void SetAntialiasing(int on) override {
        Record(DrawingCall::Kind::kSetAntialiasing).antialiasing = on;
        inner_->SetAntialiasing(on);
    }
    int GetAntialiasing() const override { return inner_->GetAntialiasing(); }
    kitui::inkwell::Transform GetTransform() const override { return inner_->GetTransform(); }
    void Translate(float dx, float dy) override {
        Record(DrawingCall::Kind::kTranslate).offset = {dx, dy};
        inner_->Translate(dx, dy);
    }
    void ClipToRect(const RectT<float>& rect) override {
        Record(DrawingCall::Kind::kClipToRect).rect = rect;
        inner_->ClipToRect(rect);
    }
    void FillPath(const PathRef& path, const BrushRef& brush, int fill_rule) override {
        DrawingCall& call = RecordPath(DrawingCall::Kind::kFillWithBrush, path);
        call.fill_rule = fill_rule;
        if (brush) {
            call.paint_given = true;
            call.color = brush->GetColor();
        }
        inner_->FillPath(InnerPath(path), brush, fill_rule);
    }
    void FillPath(const PathRef& path, const ShaderRef& shader, int fill_rule) override {
        DrawingCall& call = RecordPath(DrawingCall::Kind::kFillWithShader, path);
        call.fill_rule = fill_rule;
        if (shader) {
            call.paint_given = true;
            call.shader_start = shader->GetStart();
            call.shader_end = shader->GetEnd();
            call.shader_start_color = shader->GetStartColor();
            call.shader_end_color = shader->GetEndColor();
        }
        inner_->FillPath(InnerPath(path), shader, fill_rule);
    }
    void StrokePath(const PathRef& path, const PenRef& pen) override {
        DrawingCall& call = RecordPath(DrawingCall::Kind::kStroke, path);
        if (pen) {
            call.paint_given = true;
            call.color = pen->GetColor();
            call.pen_width = pen->GetWidth();
        }
        inner_->StrokePath(InnerPath(path), pen);
    }
    void DrawText(const kitcore::utility::UTF16String& text, const RectT<float>& box,
                  const ColorRGBA& color, const kitui::inkwell::TextStyle& style) override {
        DrawingCall& call = Record(DrawingCall::Kind::kDrawText);
        call.text = strings::Utf16ToUtf8(std::u16string_view(text.data(), text.size()));
        call.rect = box;
        call.color = color;
        inner_->DrawText(text, box, color, style);
    }
    float MeasureText(const kitcore::utility::UTF16String& text,
                      const kitui::inkwell::TextStyle& style) override {
        return inner_->MeasureText(text, style);
    }
    void DrawPicture(const PictureRef& picture, const PointT<float>& origin) override {
        Record(DrawingCall::Kind::kDrawPicture).offset = origin;
        inner_->DrawPicture(picture, origin);
    }

private:
    DrawingCall& Record(DrawingCall::Kind kind) {
        DrawingCall call;
        call.kind = kind;
        call.transform = inner_->GetTransform();
        log_->calls.push_back(std::move(call));
        return log_->calls.back();
    }
    DrawingCall& RecordPath(DrawingCall::Kind kind, const PathRef& path) {
        DrawingCall& call = Record(kind);
        if (const auto* recording = dynamic_cast<const RecordingPath*>(path.get())) {
            call.path = recording->Elements();
            call.path_recorded = true;
        }
        return call;
    }
    // The path that the target's surface knows: the one a recording path wraps.
    static PathRef InnerPath(const PathRef& path) {
        if (const auto* recording = dynamic_cast<const RecordingPath*>(path.get())) {
            return recording->Inner();
        }
        return path;
    }

    kitui::inkwell::SurfaceRef inner_;
    std::shared_ptr<Log> log_;
};

} // namespace recording

struct RecordingInkwell::Impl {
    std::shared_ptr<recording::Log> log = std::make_shared<recording::Log>();
    kitui::inkwell::Inkwell ink;

    explicit Impl(const kitui::inkwell::Inkwell& target)
        : ink(boost::make_shared<recording::RecordingSupplier>(target.GetSupplierRef(), log),
              boost::make_shared<recording::RecordingSurface>(target.GetSurfaceRef(), log)) {}
};

RecordingInkwell::RecordingInkwell(const kitui::inkwell::Inkwell& target)
    : impl_(std::make_unique<Impl>(target)) {}

RecordingInkwell::~RecordingInkwell() = default;

kitui::inkwell::Inkwell& RecordingInkwell::GetInkwell() noexcept {
    return impl_->ink;
}

const std::vector<DrawingCall>& RecordingInkwell::Calls() const noexcept {
    return impl_->log->calls;
}

std::vector<DrawingCall> RecordingInkwell::FillsAndStrokes() const {
    std::vector<DrawingCall> result;
    std::copy_if(impl_->log->calls.begin(), impl_->log->calls.end(), std::back_inserter(result),
                 [](const DrawingCall& call) { return call.IsFillOrStroke(); });
    return result;
}

int RecordingInkwell::ShaderQueries() const noexcept {
    return impl_->log->shaderQueries;
}

void RecordingInkwell::Clear() noexcept {
    impl_->log->calls.clear();
    impl_->log->shaderQueries = 0;
}

} // namespace qzhost
