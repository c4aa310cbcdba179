#include "zelcore/utility/SmallBlockAllocator.h"

#include <algorithm>
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

// A chain of free blocks, linked through their first word.
struct Batch {
    FreeBlock* head = nullptr;
    std::uint32_t count = 0;
};

// Takes the first `count` blocks of a chain of at least that many.
Batch Detach(Batch& chain, std::uint32_t count) {
    Batch taken{chain.head, count};
    FreeBlock* last = chain.head;
    for (std::uint32_t i = 1; i < count; ++i) {
        last = NextOf(last);
    }
    chain.head = NextOf(last);
    chain.count -= count;
    Link(last, nullptr);
    return taken;
}

// One thread's free blocks. Only its thread touches the lists and counts;
// inUse is atomic so that GetStats may read it from any thread.
struct ThreadCache {
    enum class State : unsigned char { kUnregistered, kLive, kRetired };

    std::array<Batch, kClassCount> free{};
    std::atomic<std::ptrdiff_t> inUse{0}; // blocks this thread took, less those it returned
    State state = State::kUnregistered;
    ThreadCache* previous = nullptr;
    ThreadCache* next = nullptr;
};

constinit thread_local ThreadCache tCache;

// The pool hands out and takes back whole batches, so that a thread's trade
// with it costs no walk through blocks that left the cache long ago.
class Pool {
public:
    void* Allocate(std::size_t bytes) {
        const std::size_t index = ClassIndex(bytes);
        ThreadCache& cache = LiveCache();
        Batch& own = cache.free[index];
        if (own.head == nullptr) {
            std::lock_guard lock(mutex_);
            own = TakeBatch(index);
        }
        FreeBlock* block = own.head;
        own.head = NextOf(block);
        --own.count;
        if (cache.state == ThreadCache::State::kRetired) {
            std::lock_guard lock(mutex_);
            GiveBatch(index, own);
            own = {};
            ++retiredInUse_;
        } else {
            cache.inUse.store(cache.inUse.load(std::memory_order_relaxed) + 1,
                              std::memory_order_relaxed);
        }
        UNPOISON(block, kMinClassBytes << index);
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
        Batch& own = cache.free[index];
        Link(block, own.head);
        own.head = block;
        ++own.count;
        if (cache.state == ThreadCache::State::kRetired) {
            std::lock_guard lock(mutex_);
            GiveBatch(index, own);
            own = {};
            --retiredInUse_;
            return;
        }
        cache.inUse.store(cache.inUse.load(std::memory_order_relaxed) - 1,
                          std::memory_order_relaxed);
        if (own.count > kCacheBlocks) {
            // The blocks freed last, still in the cache, are kept; older ones go.
            Batch kept = Detach(own, kCacheBlocks - kBatchBlocks);
            std::lock_guard lock(mutex_);
            GiveBatch(index, own);
            own = kept;
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
    // thread allocates or frees after that goes straight to the pool.
    void Retire(ThreadCache& cache) noexcept {
        std::lock_guard lock(mutex_);
        for (std::size_t index = 0; index < kClassCount; ++index) {
            GiveBatch(index, cache.free[index]);
            cache.free[index] = {};
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

    // The caller holds the lock for these.
    Batch TakeBatch(std::size_t index) {
        if (batches_[index].empty()) {
            Refill(index, kMinClassBytes << index);
        }
        const Batch batch = batches_[index].back();
        batches_[index].pop_back();
        return batch;
    }

    void GiveBatch(std::size_t index, const Batch& batch) noexcept {
        if (batch.count > 0) {
            batches_[index].push_back(batch);
        }
    }

    // Carves a new chunk into batches of blocks of one class.
    void Refill(std::size_t index, std::size_t blockBytes) {
        auto* chunk = static_cast<std::byte*>(::operator new(kChunkBytes));
        chunks_.push_back(chunk);
        const std::size_t blocks = kChunkBytes / blockBytes;
        batches_[index].reserve(batches_[index].size() + blocks / kBatchBlocks + 1);
        for (std::size_t first = 0; first < blocks; first += kBatchBlocks) {
            const std::size_t end = std::min<std::size_t>(first + kBatchBlocks, blocks);
            FreeBlock* head = nullptr;
            for (std::size_t block = end; block-- > first;) {
                auto* free = reinterpret_cast<FreeBlock*>(chunk + block * blockBytes);
                free->next = head;
                head = free;
            }
            batches_[index].push_back({head, static_cast<std::uint32_t>(end - first)});
        }
        POISON(chunk, kChunkBytes);
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
    std::array<std::vector<Batch>, kClassCount> batches_;
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
