// Suite publication into the host's suite registry.
#include "host/U_Suites.h"

#include "qzhost/HostControls.h"
#include "qzhost/SuiteRegistry.h"

QZ_Err U_SP_AddSPSuite(void* host_a, void* host_b, const char* name, std::int32_t version,
                       std::int32_t, std::int32_t slot_count, const void* table) {
    qzhost::RequireUIThread("U_SP_AddSPSuite");
    if (QZ_Err err = qzhost::HostControls::Get().InjectedError(qzhost::op::kAddSuite)) {
        return err;
    }
    if (host_a != nullptr || host_b != nullptr || slot_count <= 0) {
        return QZ_Err_NULL_ARGUMENT;
    }
    return qzhost::SuiteRegistry::Get().Publish(name, version, table);
}
