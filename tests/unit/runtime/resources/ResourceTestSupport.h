// Helpers of the resource reader tests: bytes from text, and the message of the format
// error that a read throws.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "qzhost/ResourceArchive.h"

namespace qztest {

/// The bytes of `text`.
inline std::vector<std::uint8_t> Bytes(const std::string& text) {
    return {text.begin(), text.end()};
}

/// The message of the ResourceFormatError that `read` throws; fails the test when it
/// throws none.
template <class F>
std::string FormatError(F&& read) {
    try {
        read();
    } catch (const qzhost::resources::ResourceFormatError& error) {
        return error.what();
    }
    ADD_FAILURE() << "no ResourceFormatError";
    return "";
}

} // namespace qztest
