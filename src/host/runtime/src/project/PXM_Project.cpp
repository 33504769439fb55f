#include "host/PXM_Project.h"

#include <optional>

#include "qzhost/HostControls.h"

namespace {
// The open project; rebuilt from the host's setting on every query so that a change of
// the setting is seen at once.
std::optional<PXM_Project> gProject;
} // namespace

QZ_Err PXM_QueryProject(PXM_Project** out) {
    qzhost::RequireUIThread("PXM_QueryProject");
    auto& host = qzhost::HostControls::Get();
    host.ThrowIfInjected(qzhost::op::kProjectQuery);
    if (out == nullptr) {
        return QZ_Err_NULL_ARGUMENT;
    }
    if (const QZ_Err injected = host.InjectedError(qzhost::op::kProjectQuery); injected != 0) {
        return injected;
    }
    if (const auto depth = host.ProjectDepth()) {
        gProject.emplace(*depth);
        *out = &*gProject;
    } else {
        gProject.reset();
        *out = nullptr;
    }
    return QZ_Err_NONE;
}
