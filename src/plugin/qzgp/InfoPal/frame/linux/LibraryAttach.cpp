// The library's attach and detach notifications on Linux: the dynamic loader runs the
// constructor when it maps the library and the destructor before it unmaps it.
#include "InfoPal/frame/ModuleHandle.h"

namespace {

__attribute__((constructor)) void LibraryAttached() {
    infopal::KeepLibraryModuleHandle(
        OS_ModuleFromAddress(reinterpret_cast<const void*>(&LibraryAttached)));
}

__attribute__((destructor)) void LibraryDetached() {
    infopal::ForgetLibraryModuleHandle();
}

} // namespace
