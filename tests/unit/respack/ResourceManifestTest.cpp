#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "BuildPaths.h"
#include "InfoPalPropertyListBytes.h"
#include "qzhost/ResourceArchive.h"
#include "respack/ResourceManifest.h"

namespace {

using qzrespack::LoadManifest;
using ::testing::HasSubstr;

const std::filesystem::path kInfoPalManifest = std::filesystem::path(QZ_SOURCE_DIR) /
                                               "src/plugin/qzgp/InfoPal/resources/"
                                               "InfoPal.resources.json";

// A folder of its own in the test's temporary folder, removed at the end of the test.
class TempFolder {
public:
    TempFolder() {
        path_ = std::filesystem::path(::testing::TempDir()) /
                ("qz_manifest_" +
                 std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
        std::filesystem::remove_all(path_);
        std::filesystem::create_directories(path_);
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    std::filesystem::path Write(const std::string& name, const std::string& content) const {
        const std::filesystem::path file = path_ / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << content;
        return file;
    }

private:
    std::filesystem::path path_;
};

std::string ManifestError(const std::filesystem::path& path) {
    try {
        LoadManifest(path);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    ADD_FAILURE() << "no error";
    return "";
}

TEST(ResourceManifest, InfoPalPropertyListIsExactlyItsTable) {
    const qzrespack::Manifest manifest = LoadManifest(kInfoPalManifest);
    const qzhost::resources::Resource* prpl = nullptr;
    for (const auto& resource : manifest.resources) {
        if (resource.type == "PRPL" && resource.name == "16000") {
            prpl = &resource;
        }
    }
    ASSERT_NE(prpl, nullptr);
    EXPECT_EQ(prpl->language, 1033u);
    EXPECT_EQ(prpl->data.size(), 206u);
    EXPECT_EQ(prpl->data, qztest::InfoPalPropertyListBytes());
}

TEST(ResourceManifest, FilesAreReadRelativeToTheManifestAndListedAsInputs) {
    const TempFolder folder;
    const auto layout = folder.Write("layouts/a.xml", "<a/>");
    const auto manifestPath = folder.Write("m.json", R"({"resources": [
            {"type": "XML", "name": "CONTROL_LAYOUT", "file": "layouts/a.xml"},
            {"type": "XML", "name": "CONTROL_LAYOUT_DE_DE", "language": 1031,
             "file": "./layouts/../layouts/a.xml"},
            {"type": "PRPL", "name": 16000, "properties": [{"key": "kind", "fourcc": "QZgx"}]}
        ]})");
    const qzrespack::Manifest manifest = LoadManifest(manifestPath);
    ASSERT_EQ(manifest.resources.size(), 3u);
    EXPECT_EQ(manifest.resources[0].type, "XML");
    EXPECT_EQ(manifest.resources[0].name, "CONTROL_LAYOUT");
    EXPECT_EQ(manifest.resources[0].language, 1033u);
    EXPECT_EQ(manifest.resources[0].data, (std::vector<std::uint8_t>{'<', 'a', '/', '>'}));
    EXPECT_EQ(manifest.resources[1].language, 1031u);
    EXPECT_EQ(manifest.resources[2].name, "16000");
    EXPECT_EQ(manifest.resources[2].data.size(), 10u + 16u + 4u);
    EXPECT_EQ(manifest.inputs, (std::vector<std::filesystem::path>{manifestPath, layout, layout}));
}

TEST(ResourceManifest, MistakesAreReportedWithTheResource) {
    const TempFolder folder;
    EXPECT_THAT(ManifestError(folder.Write("a.json", "{\"resources\": [")),
                HasSubstr("a.json': [json.exception.parse_error"));
    EXPECT_THAT(ManifestError(folder.Write("b.json", "[]")),
                HasSubstr("expected an object with a \"resources\" array"));
    EXPECT_THAT(ManifestError(folder.Write("c.json", R"({"resources": [], "extra": 1})")),
                HasSubstr("unknown field \"extra\""));
    EXPECT_THAT(
        ManifestError(folder.Write("d.json", R"({"resources": [{"type": "XML", "name": "A"}]})")),
        HasSubstr("resource 1 (\"XML\" \"A\"): exactly one of \"file\" and \"properties\" is "
                  "needed"));
    EXPECT_THAT(
        ManifestError(folder.Write(
            "e.json", R"({"resources": [{"type": "XML", "name": "A", "file": "none.xml"}]})")),
        HasSubstr("resource 1 (\"XML\" \"A\"): cannot open '"));
    EXPECT_THAT(ManifestError(folder.Write(
                    "f.json", R"({"resources": [{"type": "XML", "name": "A", "file": "x",
                                   "langauge": 1}]})")),
                HasSubstr("unknown field \"langauge\""));
    EXPECT_THAT(ManifestError(folder.Write("g.json", R"({"resources": [{"type": "PRPL", "name": "1",
                                   "properties": [{"key": "kind"}]}]})")),
                HasSubstr("resource 1 (\"PRPL\" \"1\"): property 1 ('kind') has no value"));
    EXPECT_THAT(ManifestError(folder.Write(
                    "h.json", R"({"resources": [{"type": "XML", "name": "A", "language": -1,
                                   "file": "x"}]})")),
                HasSubstr("\"language\" is -1, not a number from 0 to 4294967295"));
    EXPECT_THAT(ManifestError("/no/such/manifest.json"),
                HasSubstr("manifest '/no/such/manifest.json': cannot open"));
}

} // namespace
