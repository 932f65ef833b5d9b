#pragma once

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <thread>

namespace kalvo::audio {

class Bus;

/**
 * The device without sound: a thread that renders in real time and throws the sound away. After a stand-still of half
 * a second (a suspended machine) it does not catch up. Construction starts it, destruction ends it within one buffer.
 */
class PacedDevice {
public:
    PacedDevice(Bus& bus, std::size_t bufferFrames);
    ~PacedDevice();
    PacedDevice(const PacedDevice&) = delete;
    PacedDevice& operator=(const PacedDevice&) = delete;

private:
    void Run();

    Bus& bus_;
    std::size_t bufferFrames_;
    std::mutex mutex_;
    std::condition_variable ended_;
    bool ending_ = false; // guarded by mutex_
    std::thread thread_;
};

} // namespace kalvo::audio
