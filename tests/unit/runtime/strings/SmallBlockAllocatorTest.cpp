// The small-block allocator: size classes, reuse, and blocks that change threads.
#include <gtest/gtest.h>

#include <condition_variable>
#include <cstdint>
#include <cstring>
#include <mutex>
#include <queue>
#include <thread>
#include <utility>
#include <vector>

#include "kitcore/utility/SmallBlockAllocator.h"
#include "kitcore/utility/UTF16String.h"

namespace {

using kitcore::utility::SmallBlockAllocate;
using kitcore::utility::SmallBlockFree;
using kitcore::utility::UTF16String;

struct Block {
    void* memory;
    std::size_t bytes;
    unsigned char fill;
};

Block MakeBlock(std::size_t bytes, unsigned char fill) {
    void* memory = SmallBlockAllocate(bytes);
    std::memset(memory, fill, bytes);
    return Block{memory, bytes, fill};
}

bool Intact(const Block& block) {
    const auto* bytes = static_cast<const unsigned char*>(block.memory);
    for (std::size_t i = 0; i < block.bytes; ++i) {
        if (bytes[i] != block.fill) {
            return false;
        }
    }
    return true;
}

TEST(SmallBlockAllocator, GivesUsableAlignedBlocksOfEverySize) {
    std::vector<Block> blocks;
    for (std::size_t bytes = 0; bytes <= 600; ++bytes) {
        blocks.push_back(MakeBlock(bytes, static_cast<unsigned char>(bytes)));
        ASSERT_NE(blocks.back().memory, nullptr);
        EXPECT_EQ(
            reinterpret_cast<std::uintptr_t>(blocks.back().memory) % alignof(std::max_align_t), 0U);
    }
    for (const Block& block : blocks) {
        EXPECT_TRUE(Intact(block)) << block.bytes;
        SmallBlockFree(block.memory, block.bytes);
    }
}

TEST(SmallBlockAllocator, ReusesAFreedBlockForTheNextRequestOfItsSizeClass) {
    void* first = SmallBlockAllocate(40);
    SmallBlockFree(first, 40);
    // 33 to 48 bytes share a class with 40.
    void* second = SmallBlockAllocate(48);
    EXPECT_EQ(second, first);
    SmallBlockFree(second, 48);
    void* third = SmallBlockAllocate(33);
    EXPECT_EQ(third, first);
    SmallBlockFree(third, 33);
}

TEST(SmallBlockAllocator, FreeOfNullDoesNothing) {
    SmallBlockFree(nullptr, 16);
    SmallBlockFree(nullptr, 4096);
    void* block = SmallBlockAllocate(16);
    EXPECT_NE(block, nullptr);
    SmallBlockFree(block, 16);
}

TEST(SmallBlockAllocator, ManyFreedBlocksOfOneClassAreAllUsableAgain) {
    std::vector<void*> blocks;
    for (int i = 0; i < 1000; ++i) {
        blocks.push_back(SmallBlockAllocate(64));
    }
    for (void* block : blocks) {
        SmallBlockFree(block, 64);
    }
    std::vector<Block> again;
    for (int i = 0; i < 1000; ++i) {
        again.push_back(MakeBlock(64, static_cast<unsigned char>(i)));
    }
    for (const Block& block : again) {
        EXPECT_TRUE(Intact(block));
        SmallBlockFree(block.memory, block.bytes);
    }
}

TEST(SmallBlockAllocator, BlocksFromAWorkerAreFreedOnTheMainThread) {
    std::vector<Block> blocks;
    std::thread worker([&] {
        for (std::size_t i = 0; i < 500; ++i) {
            blocks.push_back(MakeBlock(1 + i % 300, static_cast<unsigned char>(i)));
        }
    });
    worker.join(); // the worker has ended: its own lists are gone, its blocks live on
    for (const Block& block : blocks) {
        EXPECT_TRUE(Intact(block));
        SmallBlockFree(block.memory, block.bytes);
    }
    // The main thread hands the freed blocks out again.
    std::vector<Block> reused;
    for (std::size_t i = 0; i < 500; ++i) {
        reused.push_back(MakeBlock(1 + i % 300, 0xA5));
    }
    for (const Block& block : reused) {
        EXPECT_TRUE(Intact(block));
        SmallBlockFree(block.memory, block.bytes);
    }
}

TEST(SmallBlockAllocator, BlocksFromTheMainThreadAreFreedOnAWorker) {
    std::vector<Block> blocks;
    for (std::size_t i = 0; i < 500; ++i) {
        blocks.push_back(MakeBlock(1 + i % 256, static_cast<unsigned char>(i)));
    }
    int damaged = 0;
    std::thread worker([&] {
        for (const Block& block : blocks) {
            damaged += Intact(block) ? 0 : 1;
            SmallBlockFree(block.memory, block.bytes);
        }
        // Reuse them on the worker before it ends and releases its lists.
        for (std::size_t i = 0; i < 500; ++i) {
            const Block block = MakeBlock(1 + i % 256, 0x5A);
            damaged += Intact(block) ? 0 : 1;
            SmallBlockFree(block.memory, block.bytes);
        }
    });
    worker.join();
    EXPECT_EQ(damaged, 0);
}

// Producers allocate and fill blocks; consumers on other threads check and free them.
TEST(SmallBlockAllocator, ThreadsExchangeBlocksConcurrently) {
    std::mutex mutex;
    std::condition_variable ready;
    std::queue<Block> queue;
    int producers_left = 3;
    int damaged = 0;
    std::vector<std::thread> threads;
    for (int p = 0; p < 3; ++p) {
        threads.emplace_back([&, p] {
            for (int i = 0; i < 2000; ++i) {
                const std::size_t bytes = 1 + static_cast<std::size_t>((i * 7 + p) % 320);
                Block block = MakeBlock(bytes, static_cast<unsigned char>(i + p));
                // Churn the producer's own lists as well.
                void* scratch = SmallBlockAllocate(bytes);
                SmallBlockFree(scratch, bytes);
                std::lock_guard<std::mutex> lock(mutex);
                queue.push(block);
                ready.notify_one();
            }
            std::lock_guard<std::mutex> lock(mutex);
            --producers_left;
            ready.notify_all();
        });
    }
    for (int c = 0; c < 2; ++c) {
        threads.emplace_back([&] {
            for (;;) {
                Block block{};
                {
                    std::unique_lock<std::mutex> lock(mutex);
                    ready.wait(lock, [&] { return !queue.empty() || producers_left == 0; });
                    if (queue.empty()) {
                        return;
                    }
                    block = queue.front();
                    queue.pop();
                }
                const bool intact = Intact(block);
                SmallBlockFree(block.memory, block.bytes);
                if (!intact) {
                    std::lock_guard<std::mutex> lock(mutex);
                    ++damaged;
                }
            }
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(damaged, 0);
    EXPECT_TRUE(queue.empty());
}

TEST(SmallBlockAllocator, StringsBuiltOnAWorkerAreDestroyedOnTheMainThread) {
    std::vector<UTF16String> texts;
    std::thread worker([&] {
        for (int i = 0; i < 200; ++i) {
            texts.emplace_back(static_cast<std::size_t>(i), static_cast<char16_t>(u'a' + i % 26));
        }
    });
    worker.join();
    for (int i = 0; i < 200; ++i) {
        ASSERT_EQ(texts[static_cast<std::size_t>(i)].size(), static_cast<std::size_t>(i));
        if (i > 0) {
            EXPECT_EQ(texts[static_cast<std::size_t>(i)].back(),
                      static_cast<char16_t>(u'a' + i % 26));
        }
    }
    texts.clear();
    UTF16String grown;
    for (int i = 0; i < 1000; ++i) {
        grown += u'x';
    }
    EXPECT_EQ(grown.size(), 1000U);
}

} // namespace
