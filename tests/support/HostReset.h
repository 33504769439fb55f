// Puts the reference host back to its default state: no queued calls, default settings,
// no menu commands, no hooks, an empty workspace, the calling thread as its main thread.
#pragma once

#include "qzhost/HookRegistry.h"
#include "qzhost/HostControls.h"
#include "qzhost/MainLoop.h"
#include "qzhost/MenuModel.h"
#include "qzhost/WorkspaceModel.h"

namespace qztest {

inline void ResetHost() {
    qzhost::MainLoop::Get().AdoptCurrentThread();
    qzhost::MainLoop::Get().Discard();
    qzhost::HostControls::Get().Reset();
    qzhost::MenuModel::Get().Reset();
    qzhost::HookRegistry::Get().Reset();
    qzhost::WorkspaceModel::Get().Reset();
}

} // namespace qztest
