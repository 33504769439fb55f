// Calls queued to the main thread: they join the main loop's queue and run when it drains.
#include "kitcore/threads/MainThreadQueue.h"

#include "qzhost/MainLoop.h"

namespace kitcore::threads {

bool AsyncCallFromMainThread(const boost::function<void()>& call, unsigned int options) {
    if (options != 0 || !call) {
        return false;
    }
    qzhost::MainLoop::Get().Post(call);
    return true;
}

} // namespace kitcore::threads
