// The out-of-line members of the drawing library's interfaces, so that their type
// information lives in the runtime alone.
#include "kitui/inkwell/BrushInterface.h"
#include "kitui/inkwell/Inkwell.h"
#include "kitui/inkwell/PathInterface.h"
#include "kitui/inkwell/PenInterface.h"
#include "kitui/inkwell/PictureInterface.h"
#include "kitui/inkwell/ShaderInterface.h"
#include "kitui/inkwell/SupplierInterface.h"
#include "kitui/inkwell/SurfaceInterface.h"

namespace kitui::inkwell {

PathInterface::~PathInterface() = default;
PenInterface::~PenInterface() = default;
BrushInterface::~BrushInterface() = default;
ShaderInterface::~ShaderInterface() = default;
PictureInterface::~PictureInterface() = default;
SupplierInterface::~SupplierInterface() = default;
SurfaceInterface::~SurfaceInterface() = default;

Inkwell::Inkwell(SupplierRef supplier, SurfaceRef surface)
    : supplier_(std::move(supplier)), surface_(std::move(surface)) {}

Inkwell::~Inkwell() = default;

} // namespace kitui::inkwell
