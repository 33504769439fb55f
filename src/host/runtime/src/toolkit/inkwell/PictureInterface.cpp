// The out-of-line destructor of the interface, so that its type information lives in the
// runtime alone.
#include "kitui/inkwell/PictureInterface.h"

namespace kitui::inkwell {

PictureInterface::~PictureInterface() = default;

} // namespace kitui::inkwell
