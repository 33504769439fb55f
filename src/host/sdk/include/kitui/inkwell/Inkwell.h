// A drawing context: a supplier that creates drawing objects and the surface that draws
// them. The toolkit hands one to every node that it draws.
#pragma once

#include "kitui/inkwell/BrushInterface.h"
#include "kitui/inkwell/Handles.h"
#include "kitui/inkwell/PathInterface.h"
#include "kitui/inkwell/PenInterface.h"
#include "kitui/inkwell/PictureInterface.h"
#include "kitui/inkwell/ShaderInterface.h"
#include "kitui/inkwell/SupplierInterface.h"
#include "kitui/inkwell/SurfaceInterface.h"
#include "qzgp/QZ_Basic.h"

namespace kitui::inkwell {

class QZ_HOST_API Inkwell {
public:
    Inkwell(SupplierRef supplier, SurfaceRef surface);
    ~Inkwell();
    Inkwell(const Inkwell&) = delete;
    Inkwell& operator=(const Inkwell&) = delete;

    /// [ui-thread] What makes the drawing objects (pens, brushes, paths, shaders).
    SupplierInterface* GetSupplier() const noexcept { return supplier_.get(); }
    /// [ui-thread] What the drawing objects are drawn on.
    SurfaceInterface* GetSurface() const noexcept { return surface_.get(); }
    const SupplierRef& GetSupplierRef() const noexcept { return supplier_; }
    const SurfaceRef& GetSurfaceRef() const noexcept { return surface_; }

private:
    SupplierRef supplier_;
    SurfaceRef surface_;
};

} // namespace kitui::inkwell
