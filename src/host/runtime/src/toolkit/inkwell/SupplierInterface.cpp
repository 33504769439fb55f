// The out-of-line destructor of the interface, so that its type information lives in the
// runtime alone.
#include "kitui/inkwell/SupplierInterface.h"

namespace kitui::inkwell {

SupplierInterface::~SupplierInterface() = default;

} // namespace kitui::inkwell
