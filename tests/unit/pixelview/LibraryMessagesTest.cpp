// The image libraries' own words on standard error, kept while a trap is set.
#include <gtest/gtest.h>

#include <cstdio>
#include <iostream>

#include "pixelview/LibraryMessages.h"

namespace qzhost::pixelview {
namespace {

TEST(PixelViewLibraryMessages, WhatIsWrittenToStandardErrorWhileTheTrapIsSetIsKept) {
    LibraryMessages messages;
    ::testing::internal::CaptureStderr();
    {
        const LibraryMessages::Trap trap(messages);
        std::fprintf(stderr, "libpng error: IDAT: cut short\n");
        std::fputs("  second line  \n\n", stderr);
        std::cerr << "from a C++ library" << std::endl;
        std::clog << "and its log\n";
    }
    std::fprintf(stderr, "after the trap\n");
    std::cerr << "also after" << std::endl;
    const std::string real = ::testing::internal::GetCapturedStderr();
    EXPECT_EQ(real, "after the trap\nalso after\n");
    EXPECT_EQ(messages.Take(),
              "libpng error: IDAT: cut short; second line; from a C++ library; and its log");
    EXPECT_EQ(messages.Take(), "");
}

TEST(PixelViewLibraryMessages, TakeStartsAfresh) {
    LibraryMessages messages;
    ::testing::internal::CaptureStderr();
    {
        const LibraryMessages::Trap trap(messages);
        std::fprintf(stderr, "first\n");
    }
    EXPECT_EQ(messages.Take(), "first");
    {
        const LibraryMessages::Trap trap(messages);
        std::fprintf(stderr, "second\n");
    }
    EXPECT_EQ(messages.Take(), "second");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

TEST(PixelViewLibraryMessages, ALongMessageIsCut) {
    LibraryMessages messages;
    {
        const LibraryMessages::Trap trap(messages);
        std::fprintf(stderr, "%s\n", std::string(1000, 'x').c_str());
    }
    const std::string words = messages.Take();
    EXPECT_EQ(words, std::string(300, 'x') + "...");
}

TEST(PixelViewLibraryMessages, TheLibrarysWordsAreAddedUnlessTheMessageSaysThemAlready) {
    EXPECT_EQ(WithLibraryWords("cannot read 'a.png': Read error", "libpng error: IDAT: Read error"),
              "cannot read 'a.png': Read error (libpng error: IDAT: Read error)");
    EXPECT_EQ(WithLibraryWords("cannot read 'a.png': Read error", ""),
              "cannot read 'a.png': Read error");
    EXPECT_EQ(WithLibraryWords("cannot read 'a.png': Read error", "Read error"),
              "cannot read 'a.png': Read error");
}

} // namespace
} // namespace qzhost::pixelview
