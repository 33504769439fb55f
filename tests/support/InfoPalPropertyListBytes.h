// The Info palette's property list (PRPL 16000) written out byte by byte from its table,
// without any of the host's encoding code: the bytes that the library must carry.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace qztest {

inline std::vector<std::uint8_t> InfoPalPropertyListBytes() {
    std::vector<std::uint8_t> bytes;
    auto text = [&bytes](const std::string& s) { bytes.insert(bytes.end(), s.begin(), s.end()); };
    auto u32 = [&bytes](std::uint32_t v) {
        for (int i = 0; i < 4; ++i) {
            bytes.push_back(static_cast<std::uint8_t>(v >> (8 * i)));
        }
    };
    auto zeros = [&bytes](int n) { bytes.insert(bytes.end(), static_cast<std::size_t>(n), 0); };
    // Each property: vendor and key with their bytes reversed, id 0, length, data.
    auto property = [&](const char* reversedKey, std::uint32_t length) {
        text("GLPX");
        text(reversedKey);
        u32(0);
        u32(length);
    };

    bytes = {1, 0};      // format version
    u32(0);              // reserved
    u32(7);              // property count
    property("dnik", 4); // kind
    text("xgZQ");
    property("eman", 44); // name: length byte 41, the text, 2 zero bytes
    bytes.push_back(41);
    text("$$$/QZ/QZGP/Name/InfoPalette=Info Palette");
    zeros(2);
    property("gtac", 8); // catg: length byte 7, "Ignored"
    bytes.push_back(7);
    text("Ignored");
    property("srev", 4); // vers
    u32(0x00010000);
    property("4668", 16); // 8664: entry-point name, NUL, 1 zero byte
    text("GPMain_InfoPal");
    zeros(2);
    property("LFzq", 4); // qzFL
    u32(0);
    property("DRzq", 4); // qzRD
    u32(0);
    return bytes;
}

} // namespace qztest
