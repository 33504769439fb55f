// The attach probe: a small DLL made of the plug-in's attach and detach code
// (frame/ModuleHandle.cpp, frame/windows/DllMain.cpp) and these few exports, through which
// a test sees what that code keeps. It carries one resource of its own, read through a
// resource manager over the kept handle, as the plug-in reads its own.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "InfoPal/frame/ModuleHandle.h"
#include "WineTestSupport.h"
#include "kitcore/utility/UTF16String.h"
#include "kitui/utility/ResourceManager.h"

namespace {

OS_ModuleHandle* gReportSlot = nullptr;

// Its destructor runs when the C runtime tears the DLL down, which happens after the DLL's
// DllMain has handled the detach notification: it reports the handle as the detach left it.
struct ReportAtUnload {
    ~ReportAtUnload() {
        if (gReportSlot != nullptr) {
            *gReportSlot = infopal::LibraryModuleHandle();
        }
    }
} gReportAtUnload;

} // namespace

/// The module handle that the attach notification kept.
extern "C" __declspec(dllexport) OS_ModuleHandle AttachProbe_ModuleHandle() {
    return infopal::LibraryModuleHandle();
}

/// Asks the DLL to write, as it is unloaded, the module handle that it then has into `slot`
/// (memory of the caller, which outlives the DLL).
extern "C" __declspec(dllexport) void AttachProbe_ReportAtUnload(OS_ModuleHandle* slot) {
    gReportSlot = slot;
}

/// Reads the resource `name` of `type` through a resource manager over the kept handle
/// into `out` (at most `capacity` bytes); returns its size, or -1 when it is not found.
extern "C" __declspec(dllexport) std::int64_t
    AttachProbe_ReadResource(const char* name, const char* type, std::uint8_t* out,
                             std::size_t capacity) {
    const kitui::utility::OS_ResourceManager resources(infopal::LibraryModuleHandle());
    std::vector<std::uint8_t> bytes;
    if (!resources.GetResourceBytes(qzwintest::Utf16(name), qzwintest::Utf16(type), bytes)) {
        return -1;
    }
    std::memcpy(out, bytes.data(), bytes.size() < capacity ? bytes.size() : capacity);
    return static_cast<std::int64_t>(bytes.size());
}
