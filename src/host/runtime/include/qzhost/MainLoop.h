// The host's main thread and the queue of calls posted to it.
#pragma once

#include <atomic>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

#include <boost/function.hpp>

#include "qzgp/QZ_Basic.h"

namespace qzhost {

struct DrainResult {
    std::size_t ran = 0;
    /// The integer codes that queued calls threw, in order.
    std::vector<QZ_Err> thrown;
};

class QZ_HOST_API MainLoop {
public:
    static MainLoop& Get();

    /// Makes the calling thread the host's main thread.
    void AdoptCurrentThread();
    bool IsMainThread() const;

    /// Any thread: queue a call, then tell the main loop through the wake-up, if one is set.
    void Post(boost::function<void()> call);
    /// Main thread: `wake` is called (on the posting thread, outside the queue's lock)
    /// after every post, so that an event loop that sleeps between events (the viewer's)
    /// knows to drain the queue; an empty function removes it. A host without a wake-up
    /// drains at moments of its own choosing (scripts: "run_main").
    void SetWakeup(std::function<void()> wake);
    /// Main thread: runs queued calls, oldest first, until the queue is empty (calls
    /// queued while draining run too). An integer thrown by a call is recorded; a
    /// std::exception is reported through the host and its report result recorded.
    DrainResult Drain();
    std::size_t Pending() const;
    /// Drops queued calls without running them.
    void Discard();

private:
    MainLoop();
    mutable std::mutex mutex_;
    std::deque<boost::function<void()>> queue_;
    std::function<void()> wake_;
    // Read on every thread-contract check, from any thread: atomic, so no lock is taken.
    std::atomic<std::thread::id> main_;
};

} // namespace qzhost
