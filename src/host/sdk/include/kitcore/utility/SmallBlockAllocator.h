// The host's small-block allocator: short strings and other small buffers come from
// per-thread free lists of fixed size classes instead of the general heap, so that text
// that is rebuilt on every pointer move does not allocate in steady state.
#pragma once

#include <cstddef>
#include <new>

#include "qzgp/QZ_Basic.h"

namespace kitcore::utility {

/// [any-thread] A block of at least `bytes` bytes. Blocks of the same size class are
/// interchangeable between threads: a block may be freed on another thread.
QZ_HOST_API void* SmallBlockAllocate(std::size_t bytes);
/// [any-thread] Gives back a block from SmallBlockAllocate with the same `bytes`.
QZ_HOST_API void SmallBlockFree(void* block, std::size_t bytes) noexcept;

template <class T>
class SmallBlockAllocator {
public:
    using value_type = T;

    SmallBlockAllocator() noexcept = default;
    template <class U>
    SmallBlockAllocator(const SmallBlockAllocator<U>&) noexcept {}

    T* allocate(std::size_t n) {
        if (n > static_cast<std::size_t>(-1) / sizeof(T)) {
            throw std::bad_array_new_length();
        }
        return static_cast<T*>(SmallBlockAllocate(n * sizeof(T)));
    }
    void deallocate(T* p, std::size_t n) noexcept { SmallBlockFree(p, n * sizeof(T)); }

    template <class U>
    bool operator==(const SmallBlockAllocator<U>&) const noexcept {
        return true;
    }
};

} // namespace kitcore::utility
