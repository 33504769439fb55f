// libclang hands out its strings as CXString, which the caller must release.
#pragma once

#include <string>

#include <clang-c/CXString.h>

namespace qzsdkexports {

/// The text of `text`, which it releases.
inline std::string TakeText(CXString text) {
    const char* chars = clang_getCString(text);
    std::string out = chars != nullptr ? chars : "";
    clang_disposeString(text);
    return out;
}

} // namespace qzsdkexports
