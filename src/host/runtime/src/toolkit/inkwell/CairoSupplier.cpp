#include "CairoSupplier.h"

#include <boost/make_shared.hpp>

#include "DrawingObjects.h"
#include "qzhost/ToolkitSettings.h"

namespace qzhost::inkwell {

kitui::inkwell::PathRef CairoSupplier::NewPath() {
    return boost::make_shared<RecordedPath>();
}

kitui::inkwell::PenRef CairoSupplier::NewPen(const kitui::inkwell::ColorRGBA& color, float width) {
    return boost::make_shared<SolidPen>(color, width);
}

kitui::inkwell::BrushRef CairoSupplier::NewBrush(const kitui::inkwell::ColorRGBA& color) {
    return boost::make_shared<SolidBrush>(color);
}

kitui::inkwell::ShaderRef CairoSupplier::NewLinearShader(
    const kitui::ui::PointT<float>& start, const kitui::ui::PointT<float>& end,
    const kitui::inkwell::ColorRGBA& start_color, const kitui::inkwell::ColorRGBA& end_color) {
    return boost::make_shared<LinearShader>(start, end, start_color, end_color);
}

kitui::inkwell::PictureRef CairoSupplier::NewPicture(int width, int height, float scale,
                                                     const std::uint32_t* pixels,
                                                     std::size_t stride) {
    return boost::make_shared<ImagePicture>(width, height, scale, pixels, stride);
}

bool CairoSupplier::UseShadersForFills() const {
    return ToolkitSettings::Get().ShaderFills();
}

} // namespace qzhost::inkwell
