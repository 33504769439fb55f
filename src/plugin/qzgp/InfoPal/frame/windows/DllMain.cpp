// The library's attach and detach notifications on Windows: the loader calls DllMain with
// the module handle when it attaches the library to the process and again before it
// detaches it. The handle is the library's base address, the handle through which its
// resources are read.
// Lean, and without the min and max macros (the C++ library for Windows defines NOMINMAX).
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include "InfoPal/frame/ModuleHandle.h"

// Called by the loader through the C runtime's start-up code; nothing in the library
// calls it.
extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID /*reserved*/) {
    switch (reason) {
    case DLL_PROCESS_ATTACH:
        infopal::KeepLibraryModuleHandle(reinterpret_cast<OS_ModuleHandle>(instance));
        // The library has no use for the per-thread notifications.
        ::DisableThreadLibraryCalls(instance);
        break;
    case DLL_PROCESS_DETACH:
        infopal::ForgetLibraryModuleHandle();
        break;
    default:
        break;
    }
    return TRUE;
}
