// InfoPal.dll's PE resources, read as the host reads them: the DLL is loaded as an image
// resource file (none of its code runs, none of its imports is resolved) and every
// resource is read through the runtime's Windows resource reader, then compared with what
// the resource manifest says it holds: the bytes of the file that it names, or for the
// property list the bytes written out from its table.
#include "WineTestSupport.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include <nlohmann/json.hpp>

#include "BuildPaths.h"
#include "InfoPalPropertyListBytes.h"
#include "kitui/utility/ResourceManager.h"

namespace {

using qzwintest::FileBytes;
using qzwintest::Utf16;
using qzwintest::Wide;

const std::string kResourceFolder =
    std::string(QZ_SOURCE_DIR) + "/src/plugin/qzgp/InfoPal/resources/";

// One resource of the manifest: its type, name and language, and the bytes that it must
// have in the library.
struct ManifestResource {
    std::string type;
    std::string name;
    std::uint32_t language = 0;
    std::vector<std::uint8_t> bytes;
};

std::vector<ManifestResource> ReadManifest() {
    std::ifstream in(std::filesystem::path(Wide(kResourceFolder + "InfoPal.resources.json")));
    EXPECT_TRUE(in) << "cannot read the resource manifest";
    const nlohmann::json manifest = nlohmann::json::parse(in);
    std::vector<ManifestResource> resources;
    for (const nlohmann::json& entry : manifest.at("resources")) {
        ManifestResource resource;
        resource.type = entry.at("type").get<std::string>();
        resource.name = entry.at("name").get<std::string>();
        resource.language = entry.value("language", 1033u);
        if (entry.contains("file")) {
            resource.bytes = FileBytes(kResourceFolder + entry.at("file").get<std::string>());
        } else {
            // The one resource without a file is the property list.
            EXPECT_EQ(resource.type, "PRPL");
            resource.bytes = qztest::InfoPalPropertyListBytes();
        }
        resources.push_back(std::move(resource));
    }
    return resources;
}

// What the loader enumerates of a module's resources: type, name (numbers in decimal)
// and language.
using ResourceKey = std::tuple<std::string, std::string, unsigned>;

std::string IdText(LPCWSTR id) {
    if (IS_INTRESOURCE(id)) {
        return std::to_string(reinterpret_cast<std::uintptr_t>(id));
    }
    std::string text;
    for (const wchar_t* c = id; *c != L'\0'; ++c) {
        text += static_cast<char>(*c);
    }
    return text;
}

// The walk over a module's resources: types, then each type's names, then each name's
// languages.
struct ResourceWalk {
    std::set<ResourceKey> keys;
    std::string type;
    std::string name;
};

BOOL CALLBACK OnLanguage(HMODULE, LPCWSTR, LPCWSTR, WORD language, LONG_PTR walk) {
    auto* w = reinterpret_cast<ResourceWalk*>(walk);
    w->keys.emplace(w->type, w->name, language);
    return TRUE;
}

BOOL CALLBACK OnName(HMODULE module, LPCWSTR type, LPWSTR name, LONG_PTR walk) {
    reinterpret_cast<ResourceWalk*>(walk)->name = IdText(name);
    return ::EnumResourceLanguagesW(module, type, name, OnLanguage, walk);
}

BOOL CALLBACK OnType(HMODULE module, LPWSTR type, LONG_PTR walk) {
    reinterpret_cast<ResourceWalk*>(walk)->type = IdText(type);
    return ::EnumResourceNamesW(module, type, OnName, walk);
}

std::set<ResourceKey> EnumerateResources(HMODULE module) {
    ResourceWalk walk;
    ::EnumResourceTypesW(module, OnType, reinterpret_cast<LONG_PTR>(&walk));
    return walk.keys;
}

class PeResourcesTest : public ::testing::Test {
protected:
    void SetUp() override {
        module_ = ::LoadLibraryExW(Wide(QZ_INFOPAL_LIBRARY).c_str(), nullptr,
                                   LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE);
        ASSERT_NE(module_, nullptr) << "cannot load " << QZ_INFOPAL_LIBRARY
                                    << " as a resource file: error " << ::GetLastError();
        resources_ = std::make_unique<kitui::utility::OS_ResourceManager>(
            reinterpret_cast<OS_ModuleHandle>(module_));
    }
    void TearDown() override {
        resources_.reset();
        if (module_ != nullptr) {
            ::FreeLibrary(module_);
        }
    }

    std::vector<std::uint8_t> Read(const std::string& name, const std::string& type,
                                   bool* found = nullptr) const {
        std::vector<std::uint8_t> bytes{0xEE};
        const bool ok = resources_->GetResourceBytes(Utf16(name), Utf16(type), bytes);
        if (found != nullptr) {
            *found = ok;
        }
        return bytes;
    }

    HMODULE module_ = nullptr;
    std::unique_ptr<kitui::utility::OS_ResourceManager> resources_;
};

TEST_F(PeResourcesTest, EveryResourceOfTheManifestIsReadByteForByteThroughTheReader) {
    const std::vector<ManifestResource> manifest = ReadManifest();
    ASSERT_EQ(manifest.size(), 15u);
    for (const ManifestResource& resource : manifest) {
        bool found = false;
        const std::vector<std::uint8_t> bytes = Read(resource.name, resource.type, &found);
        EXPECT_TRUE(found) << resource.type << " " << resource.name;
        EXPECT_FALSE(resource.bytes.empty()) << resource.type << " " << resource.name;
        EXPECT_TRUE(bytes == resource.bytes)
            << resource.type << " " << resource.name << ": " << bytes.size() << " bytes read, "
            << resource.bytes.size() << " expected";
    }
}

TEST_F(PeResourcesTest, TheDllHoldsExactlyTheManifestsResourcesEachInItsLanguage) {
    std::set<ResourceKey> expected;
    for (const ManifestResource& resource : ReadManifest()) {
        expected.emplace(resource.type, resource.name, resource.language);
    }
    EXPECT_EQ(EnumerateResources(module_), expected);
}

TEST_F(PeResourcesTest, ThePropertyListIsResourceNumber16000OfTypePrplInLanguage1033) {
    const HRSRC found = ::FindResourceExW(module_, L"PRPL", MAKEINTRESOURCEW(16000), 1033);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(::SizeofResource(module_, found), 206u);
    EXPECT_EQ(Read("16000", "PRPL"), qztest::InfoPalPropertyListBytes());
}

TEST_F(PeResourcesTest, TypesAndNamesAreMatchedWithoutRegardToCase) {
    const std::vector<std::uint8_t> layout = Read("CONTROL_LAYOUT", "XML");
    ASSERT_FALSE(layout.empty());
    // The panel asks for its layout by the names that its localised keys give.
    EXPECT_EQ(Read("control_layout", "xml"), layout);
    EXPECT_EQ(Read("Control_Layout", "Xml"), layout);
    EXPECT_EQ(Read("s_infocrosshairs_sm_n_d_at_2x", "svg"),
              Read("S_INFOCROSSHAIRS_SM_N_D_AT_2X", "SVG"));
    EXPECT_EQ(Read("16000", "prpl"), qztest::InfoPalPropertyListBytes());
}

TEST_F(PeResourcesTest, AResourceThatTheDllLacksIsNotFoundAndGivesNoBytes) {
    bool found = true;
    EXPECT_TRUE(Read("CONTROL_LAYOUT_XX_XX", "XML", &found).empty());
    EXPECT_FALSE(found);
    EXPECT_TRUE(Read("CONTROL_LAYOUT", "PNG", &found).empty());
    EXPECT_FALSE(found);
    EXPECT_TRUE(Read("16001", "PRPL", &found).empty());
    EXPECT_FALSE(found);
    // A name with a character outside ASCII names nothing.
    std::vector<std::uint8_t> bytes{1};
    kitcore::utility::UTF16String name = Utf16("CONTROL_LAYOUT");
    name += u'\u00C9';
    EXPECT_FALSE(resources_->GetResourceBytes(name, Utf16("XML"), bytes));
    EXPECT_TRUE(bytes.empty());
}

TEST(PeResourcesWithoutModuleTest, AReaderOverNoModuleFindsNothing) {
    const kitui::utility::OS_ResourceManager resources(nullptr);
    std::vector<std::uint8_t> bytes{1, 2};
    EXPECT_FALSE(resources.GetResourceBytes(Utf16("CONTROL_LAYOUT"), Utf16("XML"), bytes));
    EXPECT_TRUE(bytes.empty());
}

} // namespace
