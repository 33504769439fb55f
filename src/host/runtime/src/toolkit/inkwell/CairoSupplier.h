// The supplier of the runtime's drawing contexts: it makes the objects of
// DrawingObjects.h, which every Cairo surface of the runtime draws.
#pragma once

#include "kitui/inkwell/SupplierInterface.h"

namespace qzhost::inkwell {

class CairoSupplier final : public kitui::inkwell::SupplierInterface {
public:
    kitui::inkwell::PathRef NewPath() override;
    kitui::inkwell::PenRef NewPen(const kitui::inkwell::ColorRGBA& color, float width) override;
    kitui::inkwell::BrushRef NewBrush(const kitui::inkwell::ColorRGBA& color) override;
    kitui::inkwell::ShaderRef NewLinearShader(const kitui::ui::PointT<float>& start,
                                              const kitui::ui::PointT<float>& end,
                                              const kitui::inkwell::ColorRGBA& start_color,
                                              const kitui::inkwell::ColorRGBA& end_color) override;
    kitui::inkwell::PictureRef NewPicture(int width, int height, float scale,
                                          const std::uint32_t* pixels, std::size_t stride) override;
    /// The toolkit setting ShaderFills (qzhost::ToolkitSettings) at the time of asking.
    bool UseShadersForFills() const override;
};

} // namespace qzhost::inkwell
