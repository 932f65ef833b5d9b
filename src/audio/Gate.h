#pragma once

#include <atomic>
#include <thread>

namespace kalvo::audio {

/**
 * Keeps one thread out of a place while another changes something there. The entering side never waits; the closing
 * side waits only until the other has left, which takes as long as the guarded work (microseconds).
 */
class Gate {
public:
    /** Audio thread. False while closed; otherwise Leave() must follow. */
    bool TryEnter() {
        inside_.store(true, std::memory_order_seq_cst);
        if (open_.load(std::memory_order_seq_cst))
            return true;
        inside_.store(false, std::memory_order_seq_cst);
        return false;
    }
    void Leave() { inside_.store(false, std::memory_order_seq_cst); }

    /** Control thread. On return nobody is inside and nobody comes in. */
    void Close() {
        open_.store(false, std::memory_order_seq_cst);
        while (inside_.load(std::memory_order_seq_cst))
            std::this_thread::yield();
    }
    void Open() { open_.store(true, std::memory_order_seq_cst); }

private:
    std::atomic<bool> open_{true};
    std::atomic<bool> inside_{false};
};

} // namespace kalvo::audio
