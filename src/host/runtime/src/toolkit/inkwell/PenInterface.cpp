// The out-of-line destructor of the interface, so that its type information lives in the
// runtime alone.
#include "kitui/inkwell/PenInterface.h"

namespace kitui::inkwell {

PenInterface::~PenInterface() = default;

} // namespace kitui::inkwell
