#pragma once

#include "audio/SdlDevice.h"
#include "audio/Worker.h"

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace kalvo::audio {

/** Names of the output devices, UTF-8. */
struct DeviceNames {
    std::vector<std::string> devices;
    std::string standard; ///< the system's default output; empty when it cannot be told
};

/** What is to be opened. */
struct DeviceRequest {
    Bus* bus = nullptr;
    std::string name; ///< empty: the system's choice
    int sampleRate = 44100;
    int bufferFrames = 1024;
    bool othersToo = false;              ///< any other device if the named one cannot be opened, those in use last
    bool onlyIfListed = false;           ///< do not even try a name that is not enumerated
    bool startAnew = false;              ///< start the audio system anew if nothing opens and no other output is alive
    std::shared_ptr<SdlDevice> replaced; ///< closed afterwards; may be null
};

/** The answer to a request, on its way. */
class DeviceOpening;

/**
 * The platform's sound output. Every call that may take long runs on one worker thread, so that the control thread
 * never hangs on a dead sound server. Used by the control thread.
 */
class SdlAudio {
public:
    SdlAudio();
    ~SdlAudio();
    SdlAudio(const SdlAudio&) = delete;
    SdlAudio& operator=(const SdlAudio&) = delete;

    /** Waits two seconds at most; empty without a sound system. */
    DeviceNames Enumerate();
    std::shared_ptr<DeviceOpening> Open(const DeviceRequest& request);
    /** Detach() it first. Returns at once. */
    void Close(std::shared_ptr<SdlDevice> device);
    /** Nobody waits for the answer any more: what it opened is closed. */
    void Abandon(std::shared_ptr<DeviceOpening> opening);

private:
    struct Platform;
    std::shared_ptr<Platform> platform_; // used by the worker only
    Worker worker_;
};

class DeviceOpening {
public:
    /** True when the answer is there, at the latest after the timeout. */
    bool WaitFor(std::chrono::milliseconds timeout);
    /** Detached; null when nothing could be opened. Valid once WaitFor() has been true. */
    std::shared_ptr<SdlDevice> Device();

    void Answer(std::shared_ptr<SdlDevice> device);

private:
    std::mutex mutex_;
    std::condition_variable answered_;
    bool done_ = false; // guarded by mutex_
    std::shared_ptr<SdlDevice> device_;
};

} // namespace kalvo::audio
