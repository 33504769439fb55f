// How the host runs, as the host's controls set it.
#include "host/U_RunMode.h"

#include "qzhost/HostControls.h"

std::int32_t U_GetRunMode() {
    return qzhost::HostControls::Get().QueryRunMode();
}
