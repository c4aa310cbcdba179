#pragma once

#include <cstddef>
#include <new>
#include <type_traits>

namespace zelcore::utility {

// Blocks of at most this many bytes come from the pool; larger ones from operator new.
inline constexpr std::size_t kSmallBlockMaxBytes = 256;

// Process-wide pool of small blocks, sorted into power-of-two size classes from
// 16 to 256 bytes. Freed blocks go on a free list of their class and are handed
// out again; the pool's chunks are kept for the life of the process. Thread-safe.
// Under AddressSanitizer free blocks are poisoned, so a use after free is reported.
class SmallBlockPool {
public:
    struct Stats {
        std::size_t blocksInUse = 0;
        std::size_t chunksReserved = 0;
    };

    static void* Allocate(std::size_t bytes);
    static void Deallocate(void* block, std::size_t bytes) noexcept;
    static Stats GetStats();
};

// A standard allocator over SmallBlockPool. Stateless: every instance can free
// what any other allocated, so containers may move storage between them freely.
template <typename T> class SmallBlockAllocator {
public:
    using value_type = T;
    using is_always_equal = std::true_type;
    using propagate_on_container_move_assignment = std::true_type;

    SmallBlockAllocator() noexcept = default;
    template <typename U> SmallBlockAllocator(const SmallBlockAllocator<U>&) noexcept {}

    T* allocate(std::size_t n) {
        const std::size_t bytes = n * sizeof(T);
        if (n > static_cast<std::size_t>(-1) / sizeof(T)) {
            throw std::bad_array_new_length();
        }
        if (bytes <= kSmallBlockMaxBytes) {
            return static_cast<T*>(SmallBlockPool::Allocate(bytes));
        }
        return static_cast<T*>(::operator new(bytes));
    }

    void deallocate(T* p, std::size_t n) noexcept {
        const std::size_t bytes = n * sizeof(T);
        if (bytes <= kSmallBlockMaxBytes) {
            SmallBlockPool::Deallocate(p, bytes);
        } else {
            ::operator delete(p);
        }
    }

    template <typename U> bool operator==(const SmallBlockAllocator<U>&) const noexcept {
        return true;
    }
};

} // namespace zelcore::utility
