#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "qzhost/ResourceArchive.h"
#include "resources/ResourceNames.h"
#include "respack/ResourceScript.h"

namespace {

using qzhost::resources::Resource;
using qzrespack::ResourceScriptNameProblem;
using qzrespack::ResourceScriptText;
using ::testing::HasSubstr;

Resource Make(std::string type, std::string name, std::uint32_t language = 1033) {
    return Resource{std::move(type), std::move(name), language, {1, 2, 3}};
}

std::string Script(const std::vector<Resource>& resources,
                   const std::vector<std::filesystem::path>& files) {
    return ResourceScriptText(resources, files);
}

std::string ErrorOf(const std::vector<Resource>& resources) {
    std::vector<std::filesystem::path> files(resources.size(), "/d/x.bin");
    try {
        Script(resources, files);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "";
}

TEST(ResourceScript, EachResourceIsOneLineUnderTheLanguageStatementOfItsLanguage) {
    const std::string script =
        Script({Make("XML", "CONTROL_LAYOUT"), Make("PNG", "A_B", 1031)}, {"/d/1.bin", "/d/2.bin"});
    EXPECT_THAT(script, HasSubstr("LANGUAGE 9, 1\nCONTROL_LAYOUT XML \"/d/1.bin\"\n"));
    // 1031 (German, Germany): primary language 7, sublanguage 1.
    EXPECT_THAT(script, HasSubstr("LANGUAGE 7, 1\nA_B PNG \"/d/2.bin\"\n"));
}

TEST(ResourceScript, ADecimalNameIsWrittenAsANumber) {
    EXPECT_THAT(Script({Make("PRPL", "16000")}, {"/d/p.bin"}),
                HasSubstr("\n16000 PRPL \"/d/p.bin\"\n"));
}

TEST(ResourceScript, QuotesAndBackslashesInDataPathsAreEscaped) {
    EXPECT_THAT(Script({Make("XML", "L")}, {"/d/a\"b\\c.bin"}),
                HasSubstr("L XML \"/d/a\\\"b\\\\c.bin\"\n"));
}

TEST(ResourceScript, RefusesTypesAndNamesThatTheScriptCannotHold) {
    EXPECT_THAT(ErrorOf({Make("XML", "TWO WORDS")}), HasSubstr("has the character ' '"));
    EXPECT_THAT(ErrorOf({Make("XML", "0123")}), HasSubstr("starts with a digit"));
    EXPECT_THAT(ErrorOf({Make("XML", "70000")}), HasSubstr("starts with a digit"));
    EXPECT_THAT(ErrorOf({Make("icon", "X")}), HasSubstr("word of the resource script language"));
    EXPECT_THAT(ErrorOf({Make("XML", "Begin")}), HasSubstr("word of the resource script language"));
    EXPECT_THAT(ErrorOf({Make("XML", "X", 70000)}), HasSubstr("language 70000 is above 65535"));
    // The message names the resource.
    EXPECT_THAT(ErrorOf({Make("XML", "A-B")}), HasSubstr("resource XML 'A-B'"));
}

TEST(ResourceScript, RefusesADataFileListOfAnotherLength) {
    EXPECT_THROW(Script({Make("XML", "A"), Make("XML", "B")}, {"/d/a.bin"}), std::runtime_error);
}

TEST(ResourceScript, TheInfoPalettesTypesAndNamesAreAllWritable) {
    for (const char* text : {"PRPL", "XML", "PNG", "SVG", "16000", "CONTROL_LAYOUT_JA_JP",
                             "SP_INFOCROSSHAIRS_SM_N_D_AT_3TO2X", "_x"}) {
        EXPECT_EQ(ResourceScriptNameProblem(text), "") << text;
    }
}

TEST(ResourceNumber, OnlyDecimalNumbersFrom1To65535WithoutLeadingZerosAreNumbers) {
    using qzhost::resources::ResourceNumber;
    EXPECT_EQ(ResourceNumber("16000"), 16000);
    EXPECT_EQ(ResourceNumber("1"), 1);
    EXPECT_EQ(ResourceNumber("65535"), 65535);
    EXPECT_FALSE(ResourceNumber("65536"));
    EXPECT_FALSE(ResourceNumber("0"));
    EXPECT_FALSE(ResourceNumber("016000"));
    EXPECT_FALSE(ResourceNumber("16000a"));
    EXPECT_FALSE(ResourceNumber("-1"));
    EXPECT_FALSE(ResourceNumber(""));
    EXPECT_FALSE(ResourceNumber("123456"));
}

} // namespace
