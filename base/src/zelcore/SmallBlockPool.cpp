#include "zelcore/utility/SmallBlockAllocator.h"

#include <array>
#include <atomic>
#include <cstdint>
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
// A thread keeps up to kCacheBlocks free blocks of each class for itself and
// trades them with the pool kBatchBlocks at a time, so that most allocations
// and frees take no lock.
constexpr std::uint32_t kCacheBlocks = 128;
constexpr std::uint32_t kBatchBlocks = 64;

struct FreeBlock {
    FreeBlock* next;
};

// Free blocks stay poisoned whole; only their link is opened, briefly, to be
// read or written.
FreeBlock* NextOf(FreeBlock* block) {
    UNPOISON(block, sizeof(FreeBlock));
    FreeBlock* next = block->next;
    POISON(block, sizeof(FreeBlock));
    return next;
}

void Link(FreeBlock* block, FreeBlock* next) {
    UNPOISON(block, sizeof(FreeBlock));
    block->next = next;
    POISON(block, sizeof(FreeBlock));
}

std::size_t ClassIndex(std::size_t bytes) {
    std::size_t index = 0;
    for (std::size_t size = kMinClassBytes; size < bytes; size <<= 1) {
        ++index;
    }
    return index;
}

// One thread's free blocks. Only its thread touches the lists and counts;
// inUse is atomic so that GetStats may read it from any thread.
struct ThreadCache {
    enum class State : unsigned char { kUnregistered, kLive, kRetired };

    std::array<FreeBlock*, kClassCount> heads{};
    std::array<std::uint32_t, kClassCount> counts{};
    std::atomic<std::ptrdiff_t> inUse{0}; // blocks this thread took, less those it returned
    State state = State::kUnregistered;
    ThreadCache* previous = nullptr;
    ThreadCache* next = nullptr;
};

constinit thread_local ThreadCache tCache;

class Pool {
public:
    void* Allocate(std::size_t bytes) {
        const std::size_t index = ClassIndex(bytes);
        const std::size_t blockBytes = kMinClassBytes << index;
        ThreadCache& cache = LiveCache();
        if (cache.state == ThreadCache::State::kRetired) {
            std::lock_guard lock(mutex_);
            FreeBlock* block = nullptr;
            MoveBlocks(freeLists_[index], block, 1, index);
            ++retiredInUse_;
            UNPOISON(block, blockBytes);
            return block;
        }
        if (cache.heads[index] == nullptr) {
            std::lock_guard lock(mutex_);
            cache.counts[index] +=
                MoveBlocks(freeLists_[index], cache.heads[index], kBatchBlocks, index);
        }
        FreeBlock* block = cache.heads[index];
        cache.heads[index] = NextOf(block);
        --cache.counts[index];
        cache.inUse.store(cache.inUse.load(std::memory_order_relaxed) + 1,
                          std::memory_order_relaxed);
        UNPOISON(block, blockBytes);
        return block;
    }

    void Deallocate(void* p, std::size_t bytes) noexcept {
        if (p == nullptr) {
            return;
        }
        const std::size_t index = ClassIndex(bytes);
        auto* block = static_cast<FreeBlock*>(p);
        POISON(block, kMinClassBytes << index);
        ThreadCache& cache = LiveCache();
        if (cache.state == ThreadCache::State::kRetired) {
            std::lock_guard lock(mutex_);
            Link(block, freeLists_[index]);
            freeLists_[index] = block;
            --retiredInUse_;
            return;
        }
        Link(block, cache.heads[index]);
        cache.heads[index] = block;
        cache.inUse.store(cache.inUse.load(std::memory_order_relaxed) - 1,
                          std::memory_order_relaxed);
        if (++cache.counts[index] > kCacheBlocks) {
            std::lock_guard lock(mutex_);
            cache.counts[index] -=
                MoveBlocks(cache.heads[index], freeLists_[index], kBatchBlocks, index);
        }
    }

    SmallBlockPool::Stats GetStats() {
        std::lock_guard lock(mutex_);
        std::ptrdiff_t inUse = retiredInUse_;
        for (const ThreadCache* cache = caches_; cache != nullptr; cache = cache->next) {
            inUse += cache->inUse.load(std::memory_order_relaxed);
        }
        return {static_cast<std::size_t>(inUse), chunks_.size()};
    }

    // Gives a thread's blocks back to the pool when the thread ends; what the
    // thread frees after that goes straight to the pool.
    void Retire(ThreadCache& cache) noexcept {
        std::lock_guard lock(mutex_);
        for (std::size_t index = 0; index < kClassCount; ++index) {
            MoveBlocks(cache.heads[index], freeLists_[index], cache.counts[index], index);
            cache.counts[index] = 0;
        }
        retiredInUse_ += cache.inUse.load(std::memory_order_relaxed);
        cache.inUse.store(0, std::memory_order_relaxed);
        (cache.previous ? cache.previous->next : caches_) = cache.next;
        if (cache.next) {
            cache.next->previous = cache.previous;
        }
        cache.state = ThreadCache::State::kRetired;
    }

private:
    // This thread's cache, registered with the pool on its first use.
    ThreadCache& LiveCache();

    // Moves up to `count` blocks from the head of `from` to the head of `to`
    // (a new chunk is carved when `from` is the pool's empty list); returns how
    // many moved. The caller holds the lock.
    std::uint32_t MoveBlocks(FreeBlock*& from, FreeBlock*& to, std::uint32_t count,
                             std::size_t index) {
        if (from == nullptr && &from == &freeLists_[index]) {
            Refill(index, kMinClassBytes << index);
        }
        std::uint32_t moved = 0;
        for (; moved < count && from != nullptr; ++moved) {
            FreeBlock* block = from;
            from = NextOf(block);
            Link(block, to);
            to = block;
        }
        return moved;
    }

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

    void Register(ThreadCache& cache) {
        std::lock_guard lock(mutex_);
        cache.next = caches_;
        if (caches_) {
            caches_->previous = &cache;
        }
        caches_ = &cache;
        cache.state = ThreadCache::State::kLive;
    }

    std::mutex mutex_;
    std::array<FreeBlock*, kClassCount> freeLists_{};
    std::vector<std::byte*> chunks_;
    ThreadCache* caches_ = nullptr;   // the live threads' caches
    std::ptrdiff_t retiredInUse_ = 0; // blocks in use from ended threads and late frees
};

// Never destroyed: strings in other static objects may be freed after main returns.
Pool& ThePool() {
    static Pool* pool = new Pool;
    return *pool;
}

struct CacheRetirement {
    ~CacheRetirement() { ThePool().Retire(tCache); }
};

ThreadCache& Pool::LiveCache() {
    if (tCache.state == ThreadCache::State::kUnregistered) {
        Register(tCache);
        // Its destructor runs when the thread ends.
        static thread_local CacheRetirement retirement;
        (void)retirement;
    }
    return tCache;
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
