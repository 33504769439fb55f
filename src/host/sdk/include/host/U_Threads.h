// The host's threads: which one the caller is on.
#pragma once

#include "qzgp/QZ_Basic.h"

/// [any-thread] Whether the caller is on the host's main (UI) thread.
QZ_HOST_API bool U_IsOnUIThread();
