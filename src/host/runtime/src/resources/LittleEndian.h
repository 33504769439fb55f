// Little-endian fields in byte buffers, read and written one byte at a time so that no
// field needs to be aligned and the host's own byte order does not matter.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace qzhost::resources::le {

inline std::uint16_t ReadU16(std::span<const std::uint8_t> bytes, std::size_t at) {
    return static_cast<std::uint16_t>(bytes[at] | (bytes[at + 1] << 8));
}

inline std::uint32_t ReadU32(std::span<const std::uint8_t> bytes, std::size_t at) {
    return static_cast<std::uint32_t>(bytes[at]) |
           (static_cast<std::uint32_t>(bytes[at + 1]) << 8) |
           (static_cast<std::uint32_t>(bytes[at + 2]) << 16) |
           (static_cast<std::uint32_t>(bytes[at + 3]) << 24);
}

inline std::uint64_t ReadU64(std::span<const std::uint8_t> bytes, std::size_t at) {
    return static_cast<std::uint64_t>(ReadU32(bytes, at)) |
           (static_cast<std::uint64_t>(ReadU32(bytes, at + 4)) << 32);
}

inline void AppendU16(std::vector<std::uint8_t>& out, std::uint16_t value) {
    out.push_back(static_cast<std::uint8_t>(value));
    out.push_back(static_cast<std::uint8_t>(value >> 8));
}

inline void AppendU32(std::vector<std::uint8_t>& out, std::uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8) {
        out.push_back(static_cast<std::uint8_t>(value >> shift));
    }
}

inline void AppendU64(std::vector<std::uint8_t>& out, std::uint64_t value) {
    for (int shift = 0; shift < 64; shift += 8) {
        out.push_back(static_cast<std::uint8_t>(value >> shift));
    }
}

inline void WriteU32(std::vector<std::uint8_t>& out, std::size_t at, std::uint32_t value) {
    for (int i = 0; i < 4; ++i) {
        out[at + static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(value >> (8 * i));
    }
}

inline void WriteU64(std::vector<std::uint8_t>& out, std::size_t at, std::uint64_t value) {
    for (int i = 0; i < 8; ++i) {
        out[at + static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(value >> (8 * i));
    }
}

} // namespace qzhost::resources::le
