// The project depth that an image's channel type gives the host's project, so that the
// Info panel's automatic notation shows what it would for a project made for the image.
#pragma once

#include <cstdint>

namespace qzhost::pixelview {

/// 2 (32-bit float) for floating-point channels of any width and for integers wider than
/// 16 bits; 1 (16 bits) for integers of 9 to 16 bits (10- and 12-bit formats included);
/// 0 (8 bits) for integers of 8 bits or fewer.
std::int8_t ProjectDepthFor(bool floating_point, int bits_per_channel);

} // namespace qzhost::pixelview
