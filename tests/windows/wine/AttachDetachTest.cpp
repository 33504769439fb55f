// The plug-in's attach and detach code, in a DLL of its own (the attach probe) loaded and
// unloaded for real: the attach notification keeps the module handle that the loader
// gives, the library's resources are read through it, and the detach notification
// clears it.
#include "WineTestSupport.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "BuildPaths.h"
#include "host/OS_Module.h"

namespace {

using qzwintest::Wide;

using ModuleHandleFunc = OS_ModuleHandle (*)();
using ReportAtUnloadFunc = void (*)(OS_ModuleHandle*);
using ReadResourceFunc = std::int64_t (*)(const char*, const char*, std::uint8_t*, std::size_t);

template <typename Func>
Func Export(HMODULE module, const char* name) {
    return reinterpret_cast<Func>(reinterpret_cast<void*>(::GetProcAddress(module, name)));
}

HMODULE LoadProbe() {
    return ::LoadLibraryW(Wide(QZ_ATTACH_PROBE_LIBRARY).c_str());
}

TEST(AttachDetachTest, TheAttachNotificationKeepsTheHandleThatTheLoaderGave) {
    const HMODULE probe = LoadProbe();
    ASSERT_NE(probe, nullptr) << "cannot load " << QZ_ATTACH_PROBE_LIBRARY << ": error "
                              << ::GetLastError();
    const auto moduleHandle = Export<ModuleHandleFunc>(probe, "AttachProbe_ModuleHandle");
    ASSERT_NE(moduleHandle, nullptr);
    EXPECT_EQ(moduleHandle(), reinterpret_cast<OS_ModuleHandle>(probe));
    EXPECT_TRUE(::FreeLibrary(probe));
}

TEST(AttachDetachTest, TheLibrarysResourcesAreReadThroughTheKeptHandle) {
    const HMODULE probe = LoadProbe();
    ASSERT_NE(probe, nullptr);
    const auto read = Export<ReadResourceFunc>(probe, "AttachProbe_ReadResource");
    ASSERT_NE(read, nullptr);

    const std::vector<std::uint8_t> expected =
        qzwintest::FileBytes(std::string(QZ_SOURCE_DIR) + "/tests/windows/wine/probe_note.txt");
    ASSERT_FALSE(expected.empty());
    std::vector<std::uint8_t> bytes(4096);
    const std::int64_t size = read("probe_note", "txt", bytes.data(), bytes.size());
    ASSERT_EQ(size, static_cast<std::int64_t>(expected.size()));
    bytes.resize(static_cast<std::size_t>(size));
    EXPECT_EQ(bytes, expected);
    EXPECT_EQ(read("CONTROL_LAYOUT", "XML", bytes.data(), bytes.size()), -1);
    EXPECT_TRUE(::FreeLibrary(probe));
}

TEST(AttachDetachTest, TheDetachNotificationClearsTheHandle) {
    const HMODULE probe = LoadProbe();
    ASSERT_NE(probe, nullptr);
    const auto report = Export<ReportAtUnloadFunc>(probe, "AttachProbe_ReportAtUnload");
    ASSERT_NE(report, nullptr);

    // Anything but null and the probe's handle, so that a report that never came shows.
    int marker = 0;
    OS_ModuleHandle atUnload = &marker;
    report(&atUnload);
    ASSERT_TRUE(::FreeLibrary(probe));
    EXPECT_EQ(atUnload, nullptr);
    // The probe really was unloaded: no module of that name is left in the process.
    EXPECT_EQ(::GetModuleHandleW(L"attach_probe.dll"), nullptr);
}

} // namespace
