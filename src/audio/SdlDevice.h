#pragma once

#include "audio/Gate.h"

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>

namespace kalvo::audio {

class Bus;

/**
 * One output device. Its callback renders the bus between Attach() and Detach() and gives silence otherwise; a device
 * that hangs can therefore be left to itself while the next one goes on.
 *
 * Threads: Open and Close belong to the worker of SdlAudio (they may take long), everything else to the control thread.
 */
class SdlDevice {
public:
    explicit SdlDevice(Bus& bus);
    SdlDevice(const SdlDevice&) = delete;
    SdlDevice& operator=(const SdlDevice&) = delete;

    /** Opens and starts; an empty name leaves the choice to the system. */
    bool Open(const std::string& name, int sampleRate, int bufferFrames);
    void Close();

    void Attach();
    /** On return the callback does not touch the bus any more. */
    void Detach() { gate_.Close(); }
    /**
     * Gone, or without a callback for a third of a second (four seconds right after opening); time in which nobody
     * looked does not count.
     */
    bool Lost();
    /** Open and not reported as gone. */
    bool Alive() const;

    /** Set by Open(). */
    const std::string& Name() const { return name_; }
    int BufferFrames() const { return bufferFrames_; }

private:
    static void Callback(void* user, std::uint8_t* bytes, int size);
    void Fill(float* stereo, std::size_t frames);

    Bus& bus_;
    std::string name_;
    int bufferFrames_ = 0;
    Gate gate_;
    std::atomic<std::uint64_t> callbacks_{0}; // written by the callback

    mutable std::mutex mutex_; // keeps Close() from freeing the device during a look at it
    std::uint32_t id_ = 0;     // guarded by mutex_; 0 = closed

    // control thread: the heart-beat
    using Clock = std::chrono::steady_clock;
    std::uint64_t seenCallbacks_ = 0;
    Clock::time_point lastLook_;
    Clock::duration silence_{};
};

} // namespace kalvo::audio
