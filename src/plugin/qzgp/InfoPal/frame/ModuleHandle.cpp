#include "InfoPal/frame/ModuleHandle.h"

namespace infopal {

namespace {

OS_ModuleHandle gModule = nullptr;

} // namespace

OS_ModuleHandle LibraryModuleHandle() noexcept {
    return gModule;
}

void KeepLibraryModuleHandle(OS_ModuleHandle module) noexcept {
    gModule = module;
}

void ForgetLibraryModuleHandle() noexcept {
    gModule = nullptr;
}

} // namespace infopal
