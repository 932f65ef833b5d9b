#pragma once

#include <cstddef>
#include <future>

namespace kalvo {

/** Rows that are worth a second thread. */
inline constexpr std::size_t kWorthThread = 150'000;

/** Calls work(half, begin, end) for half 0 and half 1 of so many things; both at once from so many rows on. */
template<typename Work>
void InHalves(std::size_t things, std::size_t rows, Work work, std::size_t worthThread = kWorthThread) {
    const std::size_t middle = rows < worthThread ? things : things / 2;
    std::future<void> second;
    if (middle < things)
        second = std::async(work, 1, middle, things); // runs in get() when there is no thread to be had
    work(0, 0, middle);
    if (second.valid())
        second.get();
}

} // namespace kalvo
