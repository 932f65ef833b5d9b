#pragma once

#include "audio/Bus.h"
#include "audio/PacedDevice.h"
#include "audio/SdlAudio.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace kalvo::audio {

/**
 * One output: its bus, the device that renders it, and the watch over that device. Control thread.
 *
 * When the device is lost: the bus is taken off it at once; a new device is opened in the background (the wanted one,
 * else another if the port may fall back, if nothing opens after a new start of the audio system). After half a second
 * without one the silent device keeps the music's time running, and the search is repeated every second. While another
 * than the wanted device plays, its return is looked for every second, and it is taken back.
 */
class OutputPort {
public:
    /** Takes no device yet: nothing plays until the caller renders or OpenDevice() succeeds. */
    OutputPort(SdlAudio& audio, int sampleRate, int bufferFrames);
    /** Ends with Silence(); the streams must have gone before. */
    ~OutputPort();
    OutputPort(const OutputPort&) = delete;
    OutputPort& operator=(const OutputPort&) = delete;

    /** Opens a device by name; waits five seconds at most. `mayFallBack`: another one is better than none, later on. */
    bool OpenDevice(const std::string& name, bool mayFallBack);
    /** The device without sound. */
    void OpenSilent();

    /** Takes the bus off its device for good: after it nobody renders any more. */
    void Silence();

    Bus& TheBus() { return bus_; }
    const Bus& TheBus() const { return bus_; }
    int BufferFrames() const { return device_ ? device_->BufferFrames() : bufferFrames_; }
    /** Name of the device that plays now; false when none does. */
    bool DeviceName(std::string& name) const;
    bool Offline() const { return wanting_ == Wanting::Nothing; }
    bool OnWantedDevice() const { return device_ && device_->Name() == wantedName_; }

    /** Hands a command to the audio thread; false when that has stood still for a tenth of a second. */
    bool Send(const Command& command);
    /** Takes a freed voice until the audio thread has let go of it. */
    void Keep(std::unique_ptr<Voice> voice) { leaving_.push_back(std::move(voice)); }
    void DropRetired();
    std::size_t Leaving() const { return leaving_.size(); }

    /** Looks after the device; true when it has been lost since the last look. */
    bool Watch();

private:
    using Clock = std::chrono::steady_clock;
    enum class Wanting { Nothing, Silence, Device };

    DeviceRequest Request();
    void StartSearch(bool everything);
    void TakeAnswer();
    void Attach(std::shared_ptr<SdlDevice> device);

    SdlAudio& audio_;
    Bus bus_;
    int bufferFrames_;
    Wanting wanting_ = Wanting::Nothing;
    std::string wantedName_;
    bool mayFallBack_ = false;
    std::shared_ptr<SdlDevice> device_;
    std::unique_ptr<PacedDevice> silent_;
    std::shared_ptr<DeviceOpening> opening_;
    Clock::time_point lost_;
    Clock::time_point nextSearch_;
    std::shared_ptr<SdlDevice> dead_; // lost and not yet closed
    std::vector<std::unique_ptr<Voice>> leaving_;
};

} // namespace kalvo::audio
