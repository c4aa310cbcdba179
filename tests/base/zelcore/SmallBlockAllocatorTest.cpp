#include "zelcore/utility/SmallBlockAllocator.h"
#include "zelcore/UTF16String.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <set>
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
