// The library's module handle, kept from the moment the library is attached to the
// process until it is detached, for access to the library's own resources. The attach and
// detach notifications differ by platform (frame/linux/LibraryAttach.cpp,
// frame/windows/DllMain.cpp); both end here.
#pragma once

#include "host/OS_Module.h"

namespace infopal {

/// The module handle, or null while the library is not attached.
OS_ModuleHandle LibraryModuleHandle() noexcept;

/// The library was attached to the process as `module`.
void KeepLibraryModuleHandle(OS_ModuleHandle module) noexcept;

/// The library is being detached from the process.
void ForgetLibraryModuleHandle() noexcept;

} // namespace infopal
