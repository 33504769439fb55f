// The host's main thread and the queue of calls posted to it.
#pragma once

#include <atomic>
#include <cstddef>
#include <deque>
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

    /// Any thread: queue a call.
    void Post(boost::function<void()> call);
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
    // Read on every thread-contract check, from any thread: atomic, so no lock is taken.
    std::atomic<std::thread::id> main_;
};

} // namespace qzhost
