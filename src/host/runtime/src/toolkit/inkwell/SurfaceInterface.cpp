// The out-of-line destructor of the interface, so that its type information lives in the
// runtime alone.
#include "kitui/inkwell/SurfaceInterface.h"

namespace kitui::inkwell {

SurfaceInterface::~SurfaceInterface() = default;

} // namespace kitui::inkwell
