// Per-thread free lists of fixed size classes behind the host's small-block allocator.
//
// Every block of a size class is an ::operator new allocation of exactly the class size,
// so a block is interchangeable between threads: whichever thread frees it keeps it on
// its own list (or gives it back to the heap when that list is full). A thread's lists
// are released when the thread ends; frees that arrive after that (from other
// thread-local objects destroyed later) go straight to the heap.
#include "kitcore/utility/SmallBlockAllocator.h"

#include <array>
#include <cstdint>

namespace kitcore::utility {

namespace {

constexpr std::size_t kClassStep = 16;
constexpr std::size_t kClassCount = 16; // 16, 32, ... 256 bytes
constexpr std::size_t kLargestSmallBlock = kClassStep * kClassCount;
// Blocks kept per size class and thread; beyond this, freed blocks go back to the heap.
constexpr std::uint32_t kMaxBlocksPerList = 64;

struct FreeBlock {
    FreeBlock* next;
};

struct FreeList {
    FreeBlock* head = nullptr;
    std::uint32_t count = 0;
};

class ThreadLists {
public:
    ThreadLists() = default;
    ThreadLists(const ThreadLists&) = delete;
    ThreadLists& operator=(const ThreadLists&) = delete;
    ~ThreadLists();

    std::array<FreeList, kClassCount> lists;
};

enum class ListsState : unsigned char { kNotCreated, kAlive, kDestroyed };

// Trivially destructible, so it stays readable while other thread-local objects are being
// destroyed after the lists themselves.
thread_local ListsState tState = ListsState::kNotCreated;
thread_local ThreadLists* tLists = nullptr;

ThreadLists::~ThreadLists() {
    tState = ListsState::kDestroyed;
    tLists = nullptr;
    for (FreeList& list : lists) {
        while (list.head != nullptr) {
            FreeBlock* block = list.head;
            list.head = block->next;
            ::operator delete(static_cast<void*>(block));
        }
        list.count = 0;
    }
}

// The calling thread's lists, created on first use; null once the thread is ending.
ThreadLists* CurrentLists() {
    if (tState == ListsState::kAlive) {
        return tLists;
    }
    if (tState == ListsState::kDestroyed) {
        return nullptr;
    }
    thread_local ThreadLists lists;
    tLists = &lists;
    tState = ListsState::kAlive;
    return tLists;
}

constexpr std::size_t ClassIndex(std::size_t bytes) {
    return bytes == 0 ? 0 : (bytes - 1) / kClassStep;
}

constexpr std::size_t ClassSize(std::size_t index) {
    return (index + 1) * kClassStep;
}

} // namespace

void* SmallBlockAllocate(std::size_t bytes) {
    if (bytes > kLargestSmallBlock) {
        return ::operator new(bytes);
    }
    const std::size_t index = ClassIndex(bytes);
    if (ThreadLists* lists = CurrentLists()) {
        FreeList& list = lists->lists[index];
        if (list.head != nullptr) {
            FreeBlock* block = list.head;
            list.head = block->next;
            --list.count;
            return block;
        }
    }
    return ::operator new(ClassSize(index));
}

void SmallBlockFree(void* block, std::size_t bytes) noexcept {
    if (block == nullptr) {
        return;
    }
    if (bytes > kLargestSmallBlock) {
        ::operator delete(block);
        return;
    }
    ThreadLists* lists = CurrentLists();
    if (lists == nullptr) {
        ::operator delete(block);
        return;
    }
    FreeList& list = lists->lists[ClassIndex(bytes)];
    if (list.count >= kMaxBlocksPerList) {
        ::operator delete(block);
        return;
    }
    auto* free_block = static_cast<FreeBlock*>(block);
    free_block->next = list.head;
    list.head = free_block;
    ++list.count;
}

} // namespace kitcore::utility
