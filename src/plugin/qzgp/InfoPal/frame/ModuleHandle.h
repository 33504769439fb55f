// The library's module handle, kept from the moment the library is attached to the
// process until it is detached, for access to the library's own resources.
#pragma once

#include "host/OS_Module.h"

namespace infopal {

/// The module handle, or null while the library is not attached.
OS_ModuleHandle GetModuleHandle() noexcept;

} // namespace infopal
