// Point text: two or three components with one fraction digit each, "x, y" or "x, y, z".
#pragma once

#include <span>

#include "kitcore/utility/UTF16String.h"

namespace infopal {

/// [ui-thread] The text of a point of two or three components ("320.0, 240.0"); any other
/// count gives the empty text.
kitcore::utility::UTF16String FormatPointText(std::span<const float> components);

} // namespace infopal
