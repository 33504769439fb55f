// Sizes and field offsets of the resource archive (the layout is described in
// qzhost/ResourceArchive.h).
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace qzhost::resources::layout {

inline constexpr std::array<std::uint8_t, 8> kMagic = {'Q', 'Z', 'R', 'E', 'S', 'A', 'R', 'C'};
inline constexpr std::uint32_t kFormatVersion = 1;

inline constexpr std::size_t kVersionAt = 8;
inline constexpr std::size_t kCountAt = 12;
inline constexpr std::size_t kTotalSizeAt = 16;
inline constexpr std::size_t kHeaderSize = 24;

inline constexpr std::size_t kEntrySize = 40;
inline constexpr std::size_t kEntryDataOffsetAt = 0;
inline constexpr std::size_t kEntryDataSizeAt = 8;
inline constexpr std::size_t kEntryTypeOffsetAt = 16;
inline constexpr std::size_t kEntryTypeLengthAt = 20;
inline constexpr std::size_t kEntryNameOffsetAt = 24;
inline constexpr std::size_t kEntryNameLengthAt = 28;
inline constexpr std::size_t kEntryLanguageAt = 32;
inline constexpr std::size_t kEntryReservedAt = 36;

/// Archives start, and resource data starts, at multiples of this many bytes.
inline constexpr std::size_t kAlignment = 8;

inline constexpr std::size_t AlignUp(std::size_t value) {
    return (value + kAlignment - 1) / kAlignment * kAlignment;
}

} // namespace qzhost::resources::layout
