// The host's threads: the main thread is the main loop's.
#include "host/U_Threads.h"

#include "qzhost/MainLoop.h"

bool U_IsOnUIThread() {
    return qzhost::MainLoop::Get().IsMainThread();
}
