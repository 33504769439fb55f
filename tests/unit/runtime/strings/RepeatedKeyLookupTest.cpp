// Lookups of keys that were looked up before: the texts follow the key's contents and the
// host locale, and an injected lookup failure still reaches every call.
#include <gtest/gtest.h>

#include <cstring>
#include <stdexcept>
#include <string>

#include "StringTestSupport.h"
#include "host/U_LocalizedStrings.h"

namespace strings_test {
namespace {

TEST_F(HostStringTest, ARepeatedKeyFollowsEveryLocaleChange) {
    for (int round = 0; round < 2; ++round) {
        qzhost::HostControls::Get().SetLocale("de_DE");
        EXPECT_EQ(Lookup(kLayoutKey), "control_layout_de_de");
        EXPECT_EQ(Lookup(kLayoutKey), "control_layout_de_de");
        qzhost::HostControls::Get().SetLocale("en_US");
        EXPECT_EQ(Lookup(kLayoutKey), "control_layout");
        qzhost::HostControls::Get().SetLocale("ja_JP");
        EXPECT_EQ(Lookup(kLayoutKey), "control_layout_ja_jp");
    }
}

TEST_F(HostStringTest, AKeyBufferReusedWithOtherContentsGivesTheNewText) {
    char key[64];
    std::strcpy(key, "$$$/QZ/Plugin/InfoPal/Label=First^D");
    EXPECT_EQ(U_ZStringToUTF16String(key), U16(u"First\u00B0"));
    std::strcpy(key, "$$$/QZ/Plugin/InfoPal/Label=Second");
    EXPECT_EQ(Lookup(key), "Second");
    std::strcpy(key, "$$$/QZ/Plugin/InfoPal/Label=First^D");
    EXPECT_EQ(U_ZStringToUTF16String(key), U16(u"First\u00B0"));
}

TEST_F(HostStringTest, AnInjectedFailureReachesAKeyLookedUpBefore) {
    EXPECT_EQ(Lookup("$$$/QZ/Plugin/InfoPal/Position=Position:"), "Position:");
    qzhost::HostControls::Get().SetThrow("string_lookup", "lookup refused");
    try {
        (void)U_ZStringToUTF16String("$$$/QZ/Plugin/InfoPal/Position=Position:");
        ADD_FAILURE() << "no exception";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "lookup refused");
    }
    EXPECT_THROW((void)U_ZStringToMBString("$$$/QZ/Plugin/InfoPal/Position=Position:"),
                 std::runtime_error);
    qzhost::HostControls::Get().SetThrow("string_lookup", std::nullopt);
    EXPECT_EQ(Lookup("$$$/QZ/Plugin/InfoPal/Position=Position:"), "Position:");
}

} // namespace
} // namespace strings_test
