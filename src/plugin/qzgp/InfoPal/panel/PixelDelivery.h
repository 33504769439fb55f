// One pointer delivery of the pixel readout, held by value: the pixel under the pointer,
// its position and the origin, each of which the caller may leave out. It is what travels
// to the main thread when a delivery is made elsewhere, and what a hidden panel keeps until
// it is shown again, since the caller's records need not live that long.
#pragma once

#include <cstdint>

#include "host/M_Vector.h"
#include "host/PF_Pixel.h"

namespace infopal {

struct PixelDelivery {
    bool hasPixel = false;
    bool hasPosition = false;
    bool hasOrigin = false;
    PF_PixelFloat pixel{0, 0, 0, 0};
    M_Vector2T<double> position{0, 0};
    M_Vector2T<double> origin{0, 0};

    /// [any-thread] Copies what each pointer gives; a null pointer leaves its part out.
    static PixelDelivery Copy(const PF_PixelFloat* pixel, const M_Vector2T<double>* position,
                              const M_Vector2T<double>* origin) noexcept;
};

/// [any-thread] Queues `delivery` to the main thread for the panel that holds the
/// registration number `panel_serial`. There it reaches that panel only if it is still
/// the plug-in object's panel; a panel closed or replaced in the meantime drops it.
void PostPixelDelivery(std::uint64_t panel_serial, const PixelDelivery& delivery);

} // namespace infopal
