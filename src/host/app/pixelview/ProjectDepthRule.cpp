#include "pixelview/ProjectDepthRule.h"

namespace qzhost::pixelview {

std::int8_t ProjectDepthFor(bool floating_point, int bits_per_channel) {
    if (floating_point || bits_per_channel > 16) {
        return 2;
    }
    return bits_per_channel > 8 ? 1 : 0;
}

} // namespace qzhost::pixelview
