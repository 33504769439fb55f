#include "InfoPal/panel/PixelDelivery.h"

#include <boost/bind/bind.hpp>
#include <boost/function.hpp>

#include "InfoPal/frame/InfoPal.h"
#include "InfoPal/panel/InfoPal_UI.h"
#include "kitcore/threads/MainThreadQueue.h"

namespace infopal {

namespace {

// Runs on the main thread: the delivery reaches the panel that it was made for, or
// nobody.
void DeliverPixel(std::uint64_t panel_serial, const PixelDelivery& delivery) {
    InfoPal* plugin = InfoPal::GetPlugin();
    if (plugin == nullptr || panel_serial == 0 || InfoPal::CurrentPanelSerial() != panel_serial) {
        return;
    }
    if (auto* panel = dynamic_cast<InfoPal_UI*>(plugin->GetPanel())) {
        panel->UpdatePixelInfo(delivery);
    }
}

} // namespace

PixelDelivery PixelDelivery::Copy(const PF_PixelFloat* pixel, const M_Vector2T<double>* position,
                                  const M_Vector2T<double>* origin) noexcept {
    PixelDelivery delivery;
    delivery.hasPixel = pixel != nullptr;
    delivery.hasPosition = position != nullptr;
    delivery.hasOrigin = origin != nullptr;
    if (pixel != nullptr) {
        delivery.pixel = *pixel;
    }
    if (position != nullptr) {
        delivery.position = *position;
    }
    if (origin != nullptr) {
        delivery.origin = *origin;
    }
    return delivery;
}

void PostPixelDelivery(std::uint64_t panel_serial, const PixelDelivery& delivery) {
    (void)kitcore::threads::AsyncCallFromMainThread(
        boost::bind(&DeliverPixel, panel_serial, delivery), 0);
}

} // namespace infopal
