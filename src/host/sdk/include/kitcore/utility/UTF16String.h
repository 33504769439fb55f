// The host's UTF-16 string: 16-bit code units on the small-block allocator.
#pragma once

#include <string>

#include "kitcore/utility/SmallBlockAllocator.h"

namespace kitcore::utility {

using UTF16Char = char16_t;
using UTF16String =
    std::basic_string<UTF16Char, std::char_traits<UTF16Char>, SmallBlockAllocator<UTF16Char>>;

} // namespace kitcore::utility
