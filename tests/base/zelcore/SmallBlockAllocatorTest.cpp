#include "zelcore/utility/SmallBlockAllocator.h"
#include "zelcore/UTF16String.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <thread>
#include <vector>

using zelcore::UTF16String;
using zelcore::utility::SmallBlockAllocator;
using zelcore::utility::SmallBlockPool;

TEST(SmallBlockAllocator, SmallStringsAreServedAndReturnedByThePool) {
    const auto before = SmallBlockPool::GetStats();
    {
        std::vector<UTF16String> strings;
        for (int i = 0; i < 100; ++i) {
            strings.emplace_back(40, u'x'); // 82 bytes: past the in-place buffer, a small block
        }
        EXPECT_EQ(SmallBlockPool::GetStats().blocksInUse, before.blocksInUse + 100);
    }
    EXPECT_EQ(SmallBlockPool::GetStats().blocksInUse, before.blocksInUse);
}

TEST(SmallBlockAllocator, FreedBlockOfAClassIsReusedByTheNextAllocationOfThatClass) {
    SmallBlockAllocator<char16_t> alloc;
    char16_t* first = alloc.allocate(20);
    alloc.deallocate(first, 20);
    char16_t* second = alloc.allocate(17); // 34 bytes: same 64-byte class as 40 bytes
    EXPECT_EQ(first, second);
    alloc.deallocate(second, 17);
}

TEST(SmallBlockAllocator, BlocksAreDistinctAlignedAndLargeOnesBypassThePool) {
    SmallBlockAllocator<std::uint64_t> alloc;
    std::set<std::uint64_t*> seen;
    std::vector<std::uint64_t*> blocks;
    for (int i = 0; i < 5000; ++i) { // spans several chunks
        std::uint64_t* p = alloc.allocate(3);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(p) % alignof(std::uint64_t), 0u);
        p[0] = p[1] = p[2] = static_cast<std::uint64_t>(i);
        EXPECT_TRUE(seen.insert(p).second);
        blocks.push_back(p);
    }
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        ASSERT_EQ(blocks[i][2], i) << "a block was handed out twice";
        alloc.deallocate(blocks[i], 3);
    }
    const auto before = SmallBlockPool::GetStats();
    std::uint64_t* large = alloc.allocate(1000);
    EXPECT_EQ(SmallBlockPool::GetStats().blocksInUse, before.blocksInUse);
    alloc.deallocate(large, 1000);
}

// Threads keep free blocks of their own and trade them with the pool: blocks
// freed on another thread than the one that took them, and blocks of threads
// that have ended, are accounted for and handed out again, never twice.
TEST(SmallBlockAllocator, ThreadsShareThePoolWithoutLosingOrDoublingBlocks) {
    const auto before = SmallBlockPool::GetStats();
    std::vector<UTF16String> made;
    std::thread([&made] {
        for (int i = 0; i < 1000; ++i) {
            made.emplace_back(40, static_cast<char16_t>(u'a' + i % 26));
        }
    }).join();
    EXPECT_EQ(SmallBlockPool::GetStats().blocksInUse, before.blocksInUse + 1000);
    made.clear(); // freed here, taken by the ended thread
    EXPECT_EQ(SmallBlockPool::GetStats().blocksInUse, before.blocksInUse);

    std::vector<std::thread> workers;
    std::vector<int> corrupted(4, 0);
    for (int worker = 0; worker < 4; ++worker) {
        workers.emplace_back([worker, &corrupted] {
            SmallBlockAllocator<std::uint64_t> alloc;
            std::vector<std::pair<std::uint64_t*, std::size_t>> live; // a block and its size
            for (int round = 0; round < 20000; ++round) {
                if (live.size() < 300 && round % 3 != 2) {
                    const std::size_t size = 1 + static_cast<std::size_t>(round % 30);
                    std::uint64_t* block = alloc.allocate(size);
                    block[0] = static_cast<std::uint64_t>(worker) << 32 | live.size();
                    block[size - 1] = block[0];
                    live.emplace_back(block, size);
                } else if (!live.empty()) {
                    const auto [block, size] = live.back();
                    live.pop_back();
                    const std::uint64_t mark =
                        static_cast<std::uint64_t>(worker) << 32 | live.size();
                    corrupted[worker] += block[0] != mark || block[size - 1] != mark;
                    alloc.deallocate(block, size);
                }
            }
            for (const auto& [block, size] : live) {
                alloc.deallocate(block, size);
            }
        });
    }
    for (std::thread& worker : workers) {
        worker.join();
    }
    EXPECT_EQ(corrupted, std::vector<int>(4, 0));
    EXPECT_EQ(SmallBlockPool::GetStats().blocksInUse, before.blocksInUse);
}
