#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "BuildPaths.h"
#include "host/OS_Module.h"
#include "kitui/utility/ResourceManager.h"
#include "qzhost/PropertyList.h"

namespace {

using kitcore::utility::UTF16String;
using kitui::utility::OS_ResourceManager;

// The program's own resources come from tests/unit/runtime/resources/data.
std::vector<std::uint8_t> DataFile(const std::string& name) {
    std::ifstream in(std::string(QZ_SOURCE_DIR) + "/tests/unit/runtime/resources/data/" + name,
                     std::ios::binary);
    EXPECT_TRUE(in.good()) << name;
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

OS_ModuleHandle ThisProgram() {
    return OS_ModuleFromAddress(reinterpret_cast<const void*>(&DataFile));
}

TEST(OS_ResourceManager, ReadsAResourceOfThisProgramFromItsFile) {
    const OS_ResourceManager resources(ThisProgram());
    EXPECT_EQ(resources.GetModule(), ThisProgram());
    std::vector<std::uint8_t> bytes;
    ASSERT_TRUE(resources.GetResourceBytes(u"Test_Layout", u"XML", bytes));
    EXPECT_EQ(bytes, DataFile("sample_layout.xml"));
    ASSERT_TRUE(resources.GetResourceBytes(u"ALL_BYTES", u"BIN", bytes));
    EXPECT_EQ(bytes, DataFile("all_bytes.bin"));
}

TEST(OS_ResourceManager, NameAndTypeMatchWithoutRegardToCase) {
    const OS_ResourceManager resources(ThisProgram());
    std::vector<std::uint8_t> bytes;
    ASSERT_TRUE(resources.GetResourceBytes(u"TEST_LAYOUT", u"xml", bytes));
    EXPECT_EQ(bytes, DataFile("sample_layout.xml"));
    ASSERT_TRUE(resources.GetResourceBytes(u"all_bytes", u"Bin", bytes));
    EXPECT_EQ(bytes.size(), 256u);
}

TEST(OS_ResourceManager, TheDefaultLanguageComesFirst) {
    // The manifest lists the layout in language 1033 and again in 1031.
    const OS_ResourceManager resources(ThisProgram());
    std::vector<std::uint8_t> bytes;
    ASSERT_TRUE(resources.GetResourceBytes(u"test_layout", u"XML", bytes));
    EXPECT_EQ(bytes, DataFile("sample_layout.xml"));
    EXPECT_NE(bytes, DataFile("sample_layout_de.xml"));
}

TEST(OS_ResourceManager, AnEmptyResourceIsFound) {
    const OS_ResourceManager resources(ThisProgram());
    std::vector<std::uint8_t> bytes = {1, 2, 3};
    EXPECT_TRUE(resources.GetResourceBytes(u"Empty", u"TXT", bytes));
    EXPECT_TRUE(bytes.empty());
}

TEST(OS_ResourceManager, MissingResourceGivesFalseAndNoBytes) {
    const OS_ResourceManager resources(ThisProgram());
    std::vector<std::uint8_t> bytes = {1, 2, 3};
    EXPECT_FALSE(resources.GetResourceBytes(u"No_Such_Layout", u"XML", bytes));
    EXPECT_TRUE(bytes.empty());
    bytes = {1};
    EXPECT_FALSE(resources.GetResourceBytes(u"Test_Layout", u"PNG", bytes));
    EXPECT_TRUE(bytes.empty());
    // A name outside ASCII names nothing.
    EXPECT_FALSE(resources.GetResourceBytes(u"Test_Layout\u00e9", u"XML", bytes));
    EXPECT_FALSE(resources.GetResourceBytes(UTF16String(), u"XML", bytes));
}

TEST(OS_ResourceManager, NullModuleHasNoResources) {
    const OS_ResourceManager resources(nullptr);
    std::vector<std::uint8_t> bytes = {1};
    EXPECT_FALSE(resources.GetResourceBytes(u"Test_Layout", u"XML", bytes));
    EXPECT_TRUE(bytes.empty());
}

TEST(OS_ResourceManager, LibraryWithoutResourcesHasNone) {
    const OS_ResourceManager resources(
        OS_ModuleFromAddress(reinterpret_cast<const void*>(&qzhost::DecodePropertyList)));
    std::vector<std::uint8_t> bytes;
    EXPECT_FALSE(resources.GetResourceBytes(u"Test_Layout", u"XML", bytes));
}

TEST(OS_ResourceManager, ModuleWithoutAFileIsAnErrorEveryTime) {
    static const char notAModuleBase[] = "x";
    const OS_ResourceManager resources(notAModuleBase);
    std::vector<std::uint8_t> bytes;
    EXPECT_THROW(resources.GetResourceBytes(u"Test_Layout", u"XML", bytes), std::runtime_error);
    try {
        resources.GetResourceBytes(u"Test_Layout", u"XML", bytes);
        ADD_FAILURE() << "no error";
    } catch (const std::runtime_error& error) {
        EXPECT_THAT(error.what(), ::testing::HasSubstr("no library file is known for module"));
    }
}

} // namespace
