// Calls queued to the host's main thread.
#pragma once

#include <boost/function.hpp>

#include "qzgp/QZ_Basic.h"

namespace kitcore::threads {

/// [any-thread] Queues `call` to run once on the main thread, after every call queued
/// before it, when the host's main loop next drains its queue. `options` must be 0.
/// Returns whether the call was queued. An integer that the call throws is recorded
/// by the main loop as the call's failure code.
QZ_HOST_API bool AsyncCallFromMainThread(const boost::function<void()>& call, unsigned int options);

} // namespace kitcore::threads
