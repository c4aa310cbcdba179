#include "zelcore/utility/SmallBlockAllocator.h"

#include <array>
#include <mutex>
#include <vector>

#if defined(__SANITIZE_ADDRESS__)
#define CORVALA_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define CORVALA_ASAN 1
#endif
#endif

#ifdef CORVALA_ASAN
#include <sanitizer/asan_interface.h>
#define POISON(p, n) ASAN_POISON_MEMORY_REGION(p, n)
#define UNPOISON(p, n) ASAN_UNPOISON_MEMORY_REGION(p, n)
#else
#define POISON(p, n) ((void)(p), (void)(n))
#define UNPOISON(p, n) ((void)(p), (void)(n))
#endif

namespace zelcore::utility {
namespace {

constexpr std::size_t kMinClassBytes = 16;
constexpr std::size_t kClassCount = 5; // 16, 32, 64, 128, 256
constexpr std::size_t kChunkBytes = 64 * 1024;

struct FreeBlock {
    FreeBlock* next;
};

std::size_t ClassIndex(std::size_t bytes) {
    std::size_t index = 0;
    for (std::size_t size = kMinClassBytes; size < bytes; size <<= 1) {
        ++index;
    }
    return index;
}

class Pool {
public:
    void* Allocate(std::size_t bytes) {
        const std::size_t index = ClassIndex(bytes);
        const std::size_t blockBytes = kMinClassBytes << index;
        std::lock_guard lock(mutex_);
        FreeBlock* block = freeLists_[index];
        if (block == nullptr) {
            Refill(index, blockBytes);
            block = freeLists_[index];
        }
        UNPOISON(block, blockBytes);
        freeLists_[index] = block->next;
        ++blocksInUse_;
        return block;
    }

    void Deallocate(void* p, std::size_t bytes) noexcept {
        if (p == nullptr) {
            return;
        }
        const std::size_t index = ClassIndex(bytes);
        const std::size_t blockBytes = kMinClassBytes << index;
        std::lock_guard lock(mutex_);
        auto* block = static_cast<FreeBlock*>(p);
        block->next = freeLists_[index];
        POISON(block, blockBytes);
        freeLists_[index] = block;
        --blocksInUse_;
    }

    SmallBlockPool::Stats GetStats() {
        std::lock_guard lock(mutex_);
        return {blocksInUse_, chunks_.size()};
    }

private:
    // Carves a new chunk into blocks of one class and threads them onto its free list.
    void Refill(std::size_t index, std::size_t blockBytes) {
        auto* chunk = static_cast<std::byte*>(::operator new(kChunkBytes));
        chunks_.push_back(chunk);
        FreeBlock* head = freeLists_[index];
        for (std::size_t offset = kChunkBytes; offset >= blockBytes; offset -= blockBytes) {
            auto* block = reinterpret_cast<FreeBlock*>(chunk + offset - blockBytes);
            block->next = head;
            head = block;
        }
        POISON(chunk, kChunkBytes);
        freeLists_[index] = head;
    }

    std::mutex mutex_;
    std::array<FreeBlock*, kClassCount> freeLists_{};
    std::vector<std::byte*> chunks_;
    std::size_t blocksInUse_ = 0;
};

// Never destroyed: strings in other static objects may be freed after main returns.
Pool& ThePool() {
    static Pool* pool = new Pool;
    return *pool;
}

} // namespace

void* SmallBlockPool::Allocate(std::size_t bytes) {
    return ThePool().Allocate(bytes);
}

void SmallBlockPool::Deallocate(void* block, std::size_t bytes) noexcept {
    ThePool().Deallocate(block, bytes);
}

SmallBlockPool::Stats SmallBlockPool::GetStats() {
    return ThePool().GetStats();
}

} // namespace zelcore::utility
