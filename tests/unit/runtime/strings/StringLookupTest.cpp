// Localised key lookup, the host string tables and the plug-in string cache.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "StringTestSupport.h"
#include "host/U_LocalizedStrings.h"
#include "qzgp/STR_Cache.h"

namespace strings_test {
namespace {

TEST_F(HostStringTest, LookupGivesTheDefaultTextAfterTheFirstEquals) {
    EXPECT_EQ(Lookup("$$$/QZ/Plugin/InfoPal/Position=Position:"), "Position:");
    EXPECT_EQ(Lookup("$$$/QZ/Plugin/InfoPal/pallete_name=Info"), "Info");
    EXPECT_EQ(Lookup("$$$/x/Formula=a=b"), "a=b");
    EXPECT_EQ(Lookup("$$$/x/Empty="), "");
}

TEST_F(HostStringTest, LookupOfAKeyWithoutEqualsOrANullKeyIsEmpty) {
    EXPECT_EQ(Lookup("$$$/QZ/Plugin/InfoPal/Position"), "");
    EXPECT_EQ(Lookup(""), "");
    EXPECT_TRUE(U_ZStringToUTF16String(nullptr).empty());
}

TEST_F(HostStringTest, LookupExpandsDeltaAndDegreeEscapes) {
    EXPECT_EQ(U_ZStringToUTF16String("$$$/QZ/Plugin/InfoPal/Delta=^I:"), U16(u"\u0394:"));
    EXPECT_EQ(U_ZStringToUTF16String("$$$/QZ/Plugin/InfoPal/Degrees=^D"), U16(u"\u00B0"));
    EXPECT_EQ(U_ZStringToUTF16String("$$$/x=^IX ^D ^I^D"), U16(u"\u0394X \u00B0 \u0394\u00B0"));
}

TEST_F(HostStringTest, LookupReadsADoubledCaretAsOneCaret) {
    EXPECT_EQ(Lookup("$$$/x=^^I"), "^I");
    EXPECT_EQ(Lookup("$$$/x=a^^b"), "a^b");
    EXPECT_EQ(U_ZStringToUTF16String("$$$/x=^^^I"), U16(u"^\u0394"));
}

TEST_F(HostStringTest, LookupKeepsOtherCaretsAsTheyAre) {
    EXPECT_EQ(Lookup("$$$/x=50^"), "50^");
    EXPECT_EQ(Lookup("$$$/x=^x ^i ^d"), "^x ^i ^d");
    EXPECT_EQ(Lookup("$$$/x=^0 and ^3"), "^0 and ^3");
    EXPECT_EQ(Lookup("$$$/x=^"), "^");
}

TEST_F(HostStringTest, LookupDecodesUtf8DefaultTexts) {
    EXPECT_EQ(U_ZStringToUTF16String("$$$/x=Gr\xC3\xB6\xC3\x9F"
                                     "e"),
              U16(u"Gr\u00F6\u00DFe"));
    EXPECT_EQ(U_ZStringToUTF16String("$$$/x=bad\xFF"), U16(u"bad\uFFFD"));
}

TEST_F(HostStringTest, EnglishHasNoTableSoDefaultsAreUsed) {
    EXPECT_EQ(Lookup(kLayoutKey), "control_layout");
}

TEST_F(HostStringTest, EachLocalisedHostNamesItsOwnLayout) {
    const std::pair<const char*, const char*> tables[] = {
        {"de_DE", "control_layout_de_de"}, {"es_ES", "control_layout_es_es"},
        {"fr_FR", "control_layout_fr_fr"}, {"it_IT", "control_layout_it_it"},
        {"ja_JP", "control_layout_ja_jp"}, {"ko_KR", "control_layout_ko_kr"},
    };
    for (const auto& [locale, layout] : tables) {
        qzhost::HostControls::Get().SetLocale(locale);
        EXPECT_EQ(Lookup(kLayoutKey), layout) << locale;
        EXPECT_EQ(Lookup("$$$/QZ/Plugin/InfoPal/Position=Position:"), "Position:") << locale;
    }
}

TEST_F(HostStringTest, LocaleTablesMatchByLanguageAndCountry) {
    qzhost::HostControls::Get().SetLocale("de-DE");
    EXPECT_EQ(Lookup(kLayoutKey), "control_layout_de_de");
    qzhost::HostControls::Get().SetLocale("ja_JP@calendar=japanese");
    EXPECT_EQ(Lookup(kLayoutKey), "control_layout_ja_jp");
    qzhost::HostControls::Get().SetLocale("fr_CA");
    EXPECT_EQ(Lookup(kLayoutKey), "control_layout");
    qzhost::HostControls::Get().SetLocale("de");
    EXPECT_EQ(Lookup(kLayoutKey), "control_layout");
}

TEST_F(HostStringTest, ATableKeyWithoutDefaultStillFindsItsText) {
    qzhost::HostControls::Get().SetLocale("ko_KR");
    EXPECT_EQ(Lookup("$$$/QZ/Plugin/InfoPal/layout_file_name"), "control_layout_ko_kr");
}

TEST_F(HostStringTest, LookupThrowsTheInjectedErrorUntilItIsRemoved) {
    qzhost::HostControls::Get().SetThrow("string_lookup", "no strings");
    try {
        U_ZStringToUTF16String("$$$/x=y");
        ADD_FAILURE() << "no exception";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "no strings");
    }
    EXPECT_THROW(U_ZStringToMBString("$$$/x=y"), std::runtime_error);
    EXPECT_THROW(U_ZStringToUTF16String(nullptr), std::runtime_error);
    qzhost::HostControls::Get().SetThrow("string_lookup", std::nullopt);
    EXPECT_EQ(Lookup("$$$/x=y"), "y");
}

TEST_F(HostStringTest, MultibyteLookupUsesTheHostCodePage) {
    EXPECT_EQ(U_ZStringToMBString("$$$/x=45^D"), "45\xC2\xB0");
    qzhost::HostControls::Get().SetCodepage("cp1252");
    EXPECT_EQ(U_ZStringToMBString("$$$/x=45^D"), "45\xB0");
    qzhost::HostControls::Get().SetCodepage("Shift_JIS");
    EXPECT_EQ(U_ZStringToMBString("$$$/x=^IX"), "\x83\xA2X");
    EXPECT_EQ(U_ZStringToMBString(nullptr), "");
}

TEST_F(HostStringTest, MultibyteLookupReadsLocaleTables) {
    qzhost::HostControls::Get().SetLocale("it_IT");
    EXPECT_EQ(U_ZStringToMBString(kLayoutKey), "control_layout_it_it");
}

TEST_F(HostStringTest, StringCacheCountsTheModuleStringsOfTheLocale) {
    const STR_ZLinkedCachePlugin cache(STR_ModuleRecord{"Info_Palette"});
    EXPECT_STREQ(cache.ModuleName(), "Info_Palette");
    EXPECT_EQ(cache.LStrCount(), 0); // en_US has no table
    qzhost::HostControls::Get().SetLocale("fr_FR");
    EXPECT_EQ(cache.LStrCount(), 1);
}

TEST_F(HostStringTest, StringCacheLooksUpTextsAndKeyPaths) {
    qzhost::HostControls::Get().SetLocale("ja_JP");
    const STR_ZLinkedCachePlugin cache(STR_ModuleRecord{"Info_Palette"});
    ASSERT_EQ(cache.LStrCount(), 1);
    EXPECT_EQ(Utf8(cache.LStrLookup(0, false)), "control_layout_ja_jp");
    EXPECT_EQ(Utf8(cache.LStrLookup(0, true)), "$$$/QZ/Plugin/InfoPal/layout_file_name");
}

TEST_F(HostStringTest, StringCacheIndexOutOfRangeGivesEmptyText) {
    qzhost::HostControls::Get().SetLocale("de_DE");
    const STR_ZLinkedCachePlugin cache(STR_ModuleRecord{"Info_Palette"});
    EXPECT_TRUE(cache.LStrLookup(1, false).empty());
    EXPECT_TRUE(cache.LStrLookup(-1, false).empty());
    EXPECT_TRUE(cache.LStrLookup(1000, true).empty());
    qzhost::HostControls::Get().SetLocale("en_US");
    EXPECT_TRUE(cache.LStrLookup(0, false).empty());
}

TEST_F(HostStringTest, StringCacheOfAnUnknownModuleHasNoStrings) {
    qzhost::HostControls::Get().SetLocale("de_DE");
    const STR_ZLinkedCachePlugin unknown(STR_ModuleRecord{"Other_Module"});
    EXPECT_EQ(unknown.LStrCount(), 0);
    EXPECT_TRUE(unknown.LStrLookup(0, false).empty());
    const STR_ZLinkedCachePlugin unnamed(STR_ModuleRecord{nullptr});
    EXPECT_EQ(unnamed.LStrCount(), 0);
    EXPECT_TRUE(unnamed.LStrLookup(0, true).empty());
}

TEST_F(HostStringTest, StringCacheWorksThroughItsInterface) {
    qzhost::HostControls::Get().SetLocale("es_ES");
    const STR_ZLinkedCachePlugin cache(STR_ModuleRecord{"Info_Palette"});
    const STR_IZCache& base = cache;
    EXPECT_EQ(base.LStrCount(), 1);
    EXPECT_EQ(Utf8(base.LStrLookup(0, false)), "control_layout_es_es");
}

} // namespace
} // namespace strings_test
