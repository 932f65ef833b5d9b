#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <type_traits>

namespace kalvo::audio {

/** Bounded queue of plain data from one thread to another; neither side locks or allocates. */
template<class T, std::size_t Capacity>
class SpscQueue {
    static_assert(std::is_trivially_copyable_v<T> && (Capacity & (Capacity - 1)) == 0);

public:
    /** Producer. False when full. */
    bool Push(const T& value) {
        const std::size_t tail = tail_.load(std::memory_order_relaxed);
        if (tail - head_.load(std::memory_order_acquire) == Capacity)
            return false;
        items_[tail % Capacity] = value;
        tail_.store(tail + 1, std::memory_order_release);
        return true;
    }
    /** Consumer. False when empty. */
    bool Pop(T& value) {
        const std::size_t head = head_.load(std::memory_order_relaxed);
        if (head == tail_.load(std::memory_order_acquire))
            return false;
        value = items_[head % Capacity];
        head_.store(head + 1, std::memory_order_release);
        return true;
    }

private:
    std::array<T, Capacity> items_{};
    std::atomic<std::size_t> head_{0};
    std::atomic<std::size_t> tail_{0};
};

} // namespace kalvo::audio
