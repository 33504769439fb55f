// Where text lines end: the panel's one text-lines operation.
#pragma once

#include <cstdint>

#include "kitcore/utility/UTF16String.h"

namespace infopal {

/// How the five stored lines are laid out in the panel's three text rows.
enum class TextLinesType : std::uint32_t {
    /// Rows show lines 1, 2 and 3.
    Three = 0,
    /// Rows show line 1; lines 2 and 3; lines 4 and 5.
    Five = 1,
};

class TextLinesSink {
public:
    /// [ui-thread] Shows five lines laid out by `type`.
    virtual void ShowTextLines(const kitcore::utility::UTF16String& line1,
                               const kitcore::utility::UTF16String& line2,
                               const kitcore::utility::UTF16String& line3,
                               const kitcore::utility::UTF16String& line4,
                               const kitcore::utility::UTF16String& line5, TextLinesType type) = 0;

protected:
    ~TextLinesSink() = default;
};

} // namespace infopal
