#include "host/COakApp.h"

#include "qzhost/HostControls.h"

namespace {
COakApp gApplication;
} // namespace

COakApp* gOak = &gApplication;

std::uint8_t G_msg1_redB = 0;
std::uint8_t G_msg2_redB = 0;
std::uint8_t G_msg3_redB = 0;
std::uint8_t G_msg4_redB = 0;

bool COakApp::IsUpdateSuppressed() const {
    qzhost::RequireUIThread("COakApp::IsUpdateSuppressed");
    return qzhost::HostControls::Get().UpdateSuppressed();
}

void COakApp::RefreshWindows(short flags) {
    qzhost::RequireUIThread("COakApp::RefreshWindows");
    qzhost::HostControls::Get().RecordRefreshWindows(flags);
}
