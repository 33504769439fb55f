// The out-of-line destructor of the interface, so that its type information lives in the
// runtime alone.
#include "kitui/inkwell/BrushInterface.h"

namespace kitui::inkwell {

BrushInterface::~BrushInterface() = default;

} // namespace kitui::inkwell
