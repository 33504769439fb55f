// The out-of-line destructor of the interface, so that its type information lives in the
// runtime alone.
#include "kitui/inkwell/ShaderInterface.h"

namespace kitui::inkwell {

ShaderInterface::~ShaderInterface() = default;

} // namespace kitui::inkwell
