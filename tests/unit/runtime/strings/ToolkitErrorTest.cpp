// Toolkit errors raised with a localised message.
#include <gtest/gtest.h>

#include <exception>
#include <stdexcept>
#include <string>

#include "StringTestSupport.h"
#include "kitcore/config/Error.h"

namespace strings_test {
namespace {

using kitcore::config::Error;
using kitcore::config::ThrowError;

template <class Body>
Error CaughtError(Body body) {
    try {
        body();
    } catch (const Error& error) {
        return error;
    }
    ADD_FAILURE() << "no kitcore::config::Error was thrown";
    return Error(0, "", 0, 0);
}

TEST_F(HostStringTest, ThrowErrorRaisesTheResolvedMessageWithItsFields) {
    const Error error = CaughtError([] {
        ThrowError(1, "$$$/kitcore/utility/Error/InvalidTypeConversion=Invalid type conversion.",
                   105, 21, true);
    });
    EXPECT_STREQ(error.what(), "Invalid type conversion.");
    EXPECT_EQ(error.Level(), 1);
    EXPECT_EQ(error.Major(), 105);
    EXPECT_EQ(error.Minor(), 21);
}

TEST_F(HostStringTest, ThrowErrorPutsTheFourValuesInTheMessage) {
    const Error error = CaughtError([] {
        ThrowError(2, "$$$/x=^3 ^2 ^1 ^0 ^0", -1, 7, false, U16(u"zero"), U16(u"one"), U16(u"two"),
                   U16(u"three"));
    });
    EXPECT_STREQ(error.what(), "three two one zero zero");
    EXPECT_EQ(error.Level(), 2);
    EXPECT_EQ(error.Major(), -1);
    EXPECT_EQ(error.Minor(), 7);
}

TEST_F(HostStringTest, ThrowErrorMessageIsUtf8WithEscapesExpanded) {
    const Error error = CaughtError(
        [] { ThrowError(1, "$$$/x=^I ^0^D ^^0 ^4", 1, 2, true, U16(u"\u00E9\U0001F600")); });
    EXPECT_STREQ(error.what(), "\xCE\x94 \xC3\xA9\xF0\x9F\x98\x80\xC2\xB0 ^0 ^4");
}

TEST_F(HostStringTest, ThrowErrorDoesNotScanValuesAgain) {
    const Error error =
        CaughtError([] { ThrowError(1, "$$$/x=^0", 1, 2, true, U16(u"^1 ^I"), U16(u"one")); });
    EXPECT_STREQ(error.what(), "^1 ^I");
}

TEST_F(HostStringTest, ThrowErrorWithEmptyValuesLeavesNothingInTheirPlace) {
    const Error error = CaughtError([] { ThrowError(1, "$$$/x=[^0][^1]", 1, 2, true); });
    EXPECT_STREQ(error.what(), "[][]");
}

TEST_F(HostStringTest, ThrowErrorUsesTheLocaleTable) {
    qzhost::HostControls::Get().SetLocale("de_DE");
    const Error error = CaughtError(
        [] { ThrowError(1, "$$$/QZ/Plugin/InfoPal/layout_file_name=layout", 1, 2, true); });
    EXPECT_STREQ(error.what(), "control_layout_de_de");
}

TEST_F(HostStringTest, ToolkitErrorIsAStandardException) {
    try {
        ThrowError(1, "$$$/x=broken", 105, 21, true);
    } catch (const std::exception& error) {
        EXPECT_STREQ(error.what(), "broken");
        EXPECT_NE(dynamic_cast<const Error*>(&error), nullptr);
        return;
    }
    ADD_FAILURE() << "no std::exception was thrown";
}

TEST_F(HostStringTest, ThrowErrorOfANullKeyHasAnEmptyMessage) {
    const Error error = CaughtError([] { ThrowError(3, nullptr, 4, 5, false); });
    EXPECT_STREQ(error.what(), "");
    EXPECT_EQ(error.Level(), 3);
}

TEST_F(HostStringTest, ThrowErrorThrowsTheInjectedLookupError) {
    qzhost::HostControls::Get().SetThrow("string_lookup", "lookup failed");
    try {
        ThrowError(1, "$$$/x=broken", 105, 21, true);
    } catch (const Error&) {
        ADD_FAILURE() << "the message lookup should have failed first";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "lookup failed");
    }
}

TEST(ToolkitError, CopiesKeepTheFields) {
    const Error original(4, "message", 10, 20);
    const Error copy = original; // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_STREQ(copy.what(), "message");
    EXPECT_EQ(copy.Level(), 4);
    EXPECT_EQ(copy.Major(), 10);
    EXPECT_EQ(copy.Minor(), 20);
}

} // namespace
} // namespace strings_test
