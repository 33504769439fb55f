// The out-of-line destructor of the interface, so that its type information lives in the
// runtime alone.
#include "kitui/inkwell/PathInterface.h"

namespace kitui::inkwell {

PathInterface::~PathInterface() = default;

} // namespace kitui::inkwell
