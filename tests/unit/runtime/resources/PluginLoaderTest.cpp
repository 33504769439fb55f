#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "BuildPaths.h"
#include "host/OS_Module.h"
#include "qzhost/PluginLoader.h"

namespace {

using qzhost::LoadedPlugin;
using qzhost::PluginLoadError;
using qzhost::ReadPluginInfo;
using ::testing::HasSubstr;

std::string LoadError(const std::string& path) {
    try {
        LoadedPlugin plugin(path);
    } catch (const PluginLoadError& error) {
        return error.what();
    }
    ADD_FAILURE() << "no PluginLoadError for " << path;
    return "";
}

std::string InfoError(const std::string& path) {
    try {
        ReadPluginInfo(path);
    } catch (const PluginLoadError& error) {
        return error.what();
    }
    ADD_FAILURE() << "no PluginLoadError for " << path;
    return "";
}

// Whether the dynamic loader has the library at `path` loaded in this process.
bool IsLoaded(const std::string& path) {
    std::ifstream maps("/proc/self/maps");
    const std::string canonical = std::filesystem::canonical(path).string();
    for (std::string line; std::getline(maps, line);) {
        if (line.size() >= canonical.size() &&
            line.compare(line.size() - canonical.size(), canonical.size(), canonical) == 0) {
            return true;
        }
    }
    return false;
}

TEST(PluginLoader, ReadsThePropertyListWithoutLoadingTheLibrary) {
    const qzhost::PluginInfo info = ReadPluginInfo(QZ_FIXTURE_PLUGIN);
    EXPECT_EQ(info.kind, "QZgx");
    EXPECT_EQ(info.entryPoint, "GPMain_Fixture");
    EXPECT_EQ(info.properties.formatVersion, 1);
    ASSERT_EQ(info.properties.properties.size(), 7u);
    EXPECT_EQ(info.properties.properties[3].key, "vers");
    EXPECT_EQ(info.properties.properties[3].data,
              (std::vector<std::uint8_t>{0x01, 0x00, 0x02, 0x00}));
    EXPECT_FALSE(IsLoaded(QZ_FIXTURE_PLUGIN));
}

TEST(PluginLoader, LoadsTheLibraryAndFindsTheEntryNamedByThePropertyList) {
    {
        const LoadedPlugin plugin(QZ_FIXTURE_PLUGIN);
        EXPECT_TRUE(IsLoaded(QZ_FIXTURE_PLUGIN));
        EXPECT_EQ(plugin.Info().entryPoint, "GPMain_Fixture");
        ASSERT_NE(plugin.Entry(), nullptr);
        QZGP_GlobalRefcon global = nullptr;
        EXPECT_EQ(plugin.Entry()(nullptr, 1, 2, 3, &global), 123);
        EXPECT_NE(global, nullptr);
        // The entry lives in the fixture library.
        EXPECT_EQ(std::filesystem::canonical(OS_ModulePath(
                      OS_ModuleFromAddress(reinterpret_cast<const void*>(plugin.Entry())))),
                  std::filesystem::canonical(QZ_FIXTURE_PLUGIN));
    }
    EXPECT_FALSE(IsLoaded(QZ_FIXTURE_PLUGIN));
}

TEST(PluginLoader, WrongKindIsRefused) {
    EXPECT_EQ(InfoError(QZ_FIXTURE_WRONG_KIND),
              std::string("plug-in file '") + QZ_FIXTURE_WRONG_KIND +
                  "': kind 'QZxx' is not a general plug-in (QZgx)");
    EXPECT_THAT(LoadError(QZ_FIXTURE_WRONG_KIND), HasSubstr("is not a general plug-in"));
    EXPECT_FALSE(IsLoaded(QZ_FIXTURE_WRONG_KIND));
}

TEST(PluginLoader, FileWithoutPropertyListIsRefused) {
    EXPECT_EQ(InfoError(QZ_FIXTURE_NO_PROPERTY_LIST), std::string("plug-in file '") +
                                                          QZ_FIXTURE_NO_PROPERTY_LIST +
                                                          "': no property list (PRPL 16000)");
}

TEST(PluginLoader, LibraryWithoutResourcesIsRefused) {
    const std::string runtime =
        OS_ModulePath(OS_ModuleFromAddress(reinterpret_cast<const void*>(&ReadPluginInfo)));
    EXPECT_EQ(InfoError(runtime), "plug-in file '" + runtime + "': no property list (PRPL 16000)");
}

TEST(PluginLoader, CorruptPropertyListIsRefusedNamingTheOffset) {
    const std::string message = InfoError(QZ_FIXTURE_CORRUPT_PROPERTY_LIST);
    EXPECT_THAT(message,
                HasSubstr(std::string("plug-in file '") + QZ_FIXTURE_CORRUPT_PROPERTY_LIST +
                          "': PRPL 16000: property list: "));
    EXPECT_THAT(message, HasSubstr("at offset"));
}

TEST(PluginLoader, PropertyListWithoutEntryPointIsRefused) {
    EXPECT_EQ(InfoError(QZ_FIXTURE_NO_ENTRY),
              std::string("plug-in file '") + QZ_FIXTURE_NO_ENTRY +
                  "': the property list names no entry point (no 8664 property)");
}

TEST(PluginLoader, UnterminatedEntryPointNameIsRefused) {
    EXPECT_EQ(InfoError(QZ_FIXTURE_UNTERMINATED_ENTRY),
              std::string("plug-in file '") + QZ_FIXTURE_UNTERMINATED_ENTRY +
                  "': the entry-point name in the 8664 property is not NUL-terminated");
}

TEST(PluginLoader, EntryPointMissingFromTheLibraryIsRefusedAndTheLibraryUnloaded) {
    EXPECT_EQ(ReadPluginInfo(QZ_FIXTURE_ABSENT_ENTRY).entryPoint, "GPMain_Absent");
    EXPECT_EQ(LoadError(QZ_FIXTURE_ABSENT_ENTRY),
              std::string("plug-in file '") + QZ_FIXTURE_ABSENT_ENTRY +
                  "': the library has no entry point 'GPMain_Absent' (named by its 8664 "
                  "property)");
    EXPECT_FALSE(IsLoaded(QZ_FIXTURE_ABSENT_ENTRY));
}

TEST(PluginLoader, MissingOrForeignFilesAreRefused) {
    EXPECT_EQ(InfoError("/no/such/InfoPal.so"),
              "plug-in file '/no/such/InfoPal.so': cannot open: No such file or directory");
    const std::string text = std::string(QZ_SOURCE_DIR) + "/tests/unit/runtime/resources/data/"
                                                          "sample_layout.xml";
    EXPECT_EQ(InfoError(text),
              "plug-in file '" + text + "': not an ELF file (no ELF magic at offset 0)");
}

TEST(PluginLoader, DefaultPluginLiesBesideTheProgram) {
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe");
    EXPECT_EQ(std::filesystem::path(qzhost::DefaultPluginPath()),
              self.parent_path() / "InfoPal.so");
}

} // namespace
