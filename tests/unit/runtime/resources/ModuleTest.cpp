#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "host/OS_Module.h"
#include "qzhost/PropertyList.h"

namespace {

int FunctionOfThisProgram() {
    return 7;
}
const int kDataOfThisProgram = 3;

std::string SelfPath() {
    return std::filesystem::read_symlink("/proc/self/exe").string();
}

TEST(OS_Module, AddressInThisProgramGivesTheProgramAndItsFile) {
    const OS_ModuleHandle module =
        OS_ModuleFromAddress(reinterpret_cast<const void*>(&FunctionOfThisProgram));
    ASSERT_NE(module, nullptr);
    EXPECT_EQ(OS_ModulePath(module), SelfPath());
    // Data of the same program gives the same module.
    EXPECT_EQ(OS_ModuleFromAddress(&kDataOfThisProgram), module);
}

TEST(OS_Module, AddressInALibraryGivesThatLibrary) {
    const OS_ModuleHandle runtime =
        OS_ModuleFromAddress(reinterpret_cast<const void*>(&qzhost::DecodePropertyList));
    ASSERT_NE(runtime, nullptr);
    EXPECT_NE(runtime, OS_ModuleFromAddress(reinterpret_cast<const void*>(&FunctionOfThisProgram)));
    const std::filesystem::path path = OS_ModulePath(runtime);
    EXPECT_EQ(path.filename(), "libqzhost-runtime.so");
    EXPECT_TRUE(std::filesystem::is_regular_file(path));
}

TEST(OS_Module, UnknownAddressesGiveNoModule) {
    EXPECT_EQ(OS_ModuleFromAddress(nullptr), nullptr);
    EXPECT_EQ(OS_ModuleFromAddress(reinterpret_cast<const void*>(std::uintptr_t{16})), nullptr);
    EXPECT_EQ(OS_ModulePath(nullptr), "");
}

TEST(OS_Module, AnAddressThatIsNotAModuleBaseHasNoPath) {
    const auto* inside = reinterpret_cast<const char*>(&FunctionOfThisProgram);
    ASSERT_NE(OS_ModuleFromAddress(inside), inside);
    EXPECT_EQ(OS_ModulePath(inside), "");
}

} // namespace
