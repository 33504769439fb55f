// Sole ownership of a heap object, released when the holder goes.
#pragma once

#include <memory>

namespace kitcore::utility {

template <class T>
using ScopedPtr = std::unique_ptr<T>;

} // namespace kitcore::utility
