#include "InfoPal/frame/ModuleHandle.h"

namespace infopal {

namespace {

OS_ModuleHandle gModule = nullptr;

// The attach and detach notifications of the library.
__attribute__((constructor)) void LibraryAttached() {
    gModule = OS_ModuleFromAddress(reinterpret_cast<const void*>(&LibraryAttached));
}

__attribute__((destructor)) void LibraryDetached() {
    gModule = nullptr;
}

} // namespace

OS_ModuleHandle GetModuleHandle() noexcept {
    return gModule;
}

} // namespace infopal
