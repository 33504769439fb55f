// The host's UTF-16 text as Qt's.
#pragma once

#include <QString>

#include "kitcore/utility/UTF16String.h"

namespace qzview {

inline QString ToQString(const kitcore::utility::UTF16String& text) {
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace qzview
