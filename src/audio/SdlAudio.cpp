#include "audio/SdlAudio.h"

#include "audio/SoundServer.h"
#include "audio/TimedWait.h"

#include <SDL.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace kalvo::audio {

namespace {

// SDL numbers devices of the same name: "Name (2)". A card that was plugged in again quickly gets such a number, too.
std::string WithoutNumber(const std::string& name) {
    const std::size_t bracket = name.rfind(" (");
    const bool numbered = bracket != std::string::npos && name.back() == ')' &&
                          name.find_first_not_of("0123456789", bracket + 2) == name.size() - 1;
    return numbered ? name.substr(0, bracket) : name;
}

} // namespace

// The state of the audio subsystem and what is open. One thread only.
struct SdlAudio::Platform {
    std::vector<std::shared_ptr<SdlDevice>> open;
    bool started = false;

    ~Platform() { Stop(); }
    bool Start();
    void Stop();
    std::vector<std::string> Devices();
    std::string Standard();
    void Close(const std::shared_ptr<SdlDevice>& device);
    std::shared_ptr<SdlDevice> Serve(const DeviceRequest& request);
    std::shared_ptr<SdlDevice> TryAll(const DeviceRequest& request);
    std::vector<std::string> Candidates(const DeviceRequest& request);
    bool InUse(const std::string& name) const;
    bool AnyAlive() const;
};

bool SdlAudio::Platform::Start() {
    if (!started && SoundServerHasDevices()) {
        SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
        SDL_SetHint(SDL_HINT_AUDIO_DEVICE_APP_NAME, "Kalvo");
        SDL_SetHint(SDL_HINT_AUDIO_DEVICE_STREAM_NAME, "Musik");
        started = SDL_InitSubSystem(SDL_INIT_AUDIO) == 0;
    }
    return started;
}

void SdlAudio::Platform::Stop() {
    for (const auto& device : open)
        device->Close();
    open.clear();
    if (std::exchange(started, false))
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
}

std::vector<std::string> SdlAudio::Platform::Devices() {
    std::vector<std::string> names;
    const int count = Start() ? SDL_GetNumAudioDevices(0) : 0;
    for (int i = 0; i < count; ++i) {
        if (const char* name = SDL_GetAudioDeviceName(i, 0))
            names.emplace_back(name);
    }
    return names;
}

// Not to be asked while devices come and go: SDL reads the name here without a lock against its own watching thread.
std::string SdlAudio::Platform::Standard() {
    char* name = nullptr;
    SDL_AudioSpec spec{};
    std::string standard;
    if (Start() && SDL_GetDefaultAudioInfo(&name, &spec, 0) == 0 && name != nullptr)
        standard = name;
    SDL_free(name);
    return standard;
}

void SdlAudio::Platform::Close(const std::shared_ptr<SdlDevice>& device) {
    device->Close();
    open.erase(std::remove(open.begin(), open.end(), device), open.end());
}

std::shared_ptr<SdlDevice> SdlAudio::Platform::Serve(const DeviceRequest& request) {
    std::shared_ptr<SdlDevice> device = TryAll(request);
    if (request.replaced && (device || request.startAnew))
        Close(request.replaced);
    if (!device && request.startAnew && !AnyAlive()) {
        Stop();
        device = TryAll(request);
    }
    return device;
}

std::shared_ptr<SdlDevice> SdlAudio::Platform::TryAll(const DeviceRequest& request) {
    if (!Start())
        return nullptr;
    for (const std::string& name : Candidates(request)) {
        auto device = std::make_shared<SdlDevice>(*request.bus);
        if (device->Open(name, request.sampleRate, request.bufferFrames)) {
            open.push_back(device);
            return device;
        }
    }
    return nullptr;
}

std::vector<std::string> SdlAudio::Platform::Candidates(const DeviceRequest& request) {
    if (!request.othersToo && !request.onlyIfListed)
        return {request.name};
    const std::vector<std::string> devices = Devices();
    std::vector<std::string> candidates;
    if (request.name.empty() || std::find(devices.begin(), devices.end(), request.name) != devices.end()) {
        candidates.push_back(request.name);
    } else {
        std::copy_if(devices.begin(), devices.end(), std::back_inserter(candidates), [&](const std::string& name) {
            return !InUse(name) && WithoutNumber(name) == WithoutNumber(request.name);
        });
    }
    if (!request.othersToo)
        return candidates;
    std::vector<std::string> others = devices;
    others.erase(std::remove(others.begin(), others.end(), request.name), others.end());
    std::stable_partition(others.begin(), others.end(), [this](const std::string& name) { return !InUse(name); });
    candidates.insert(candidates.end(), others.begin(), others.end());
    return candidates;
}

bool SdlAudio::Platform::InUse(const std::string& name) const {
    return std::any_of(open.begin(), open.end(), [&name](const auto& device) { return device->Name() == name; });
}

bool SdlAudio::Platform::AnyAlive() const {
    return std::any_of(open.begin(), open.end(), [](const auto& device) { return device->Alive(); });
}

SdlAudio::SdlAudio() : platform_(std::make_shared<Platform>()) {}

SdlAudio::~SdlAudio() {
    worker_.Post([platform = platform_] {
        platform->Stop();
        SDL_TLSCleanup(); // the last error of a thread that SDL has not made itself
    });
}

DeviceNames SdlAudio::Enumerate() {
    struct Answer {
        std::mutex mutex;
        std::condition_variable answered;
        bool done = false;
        DeviceNames names;
    };
    auto answer = std::make_shared<Answer>();
    worker_.Post([answer, platform = platform_] {
        DeviceNames names{platform->Devices(), platform->Standard()};
        const std::lock_guard lock(answer->mutex);
        answer->names = std::move(names);
        answer->done = true;
        answer->answered.notify_all();
    });
    std::unique_lock lock(answer->mutex);
    TimedWait(answer->answered, lock, std::chrono::seconds(2), [&answer] { return answer->done; });
    return answer->names;
}

std::shared_ptr<DeviceOpening> SdlAudio::Open(const DeviceRequest& request) {
    auto opening = std::make_shared<DeviceOpening>();
    worker_.Post([opening, request, platform = platform_] { opening->Answer(platform->Serve(request)); });
    return opening;
}

void SdlAudio::Close(std::shared_ptr<SdlDevice> device) {
    worker_.Post([device = std::move(device), platform = platform_] { platform->Close(device); });
}

void SdlAudio::Abandon(std::shared_ptr<DeviceOpening> opening) {
    worker_.Post([opening = std::move(opening), platform = platform_] {
        if (const auto device = opening->Device())
            platform->Close(device);
    });
}

bool DeviceOpening::WaitFor(std::chrono::milliseconds timeout) {
    std::unique_lock lock(mutex_);
    return TimedWait(answered_, lock, timeout, [this] { return done_; });
}

std::shared_ptr<SdlDevice> DeviceOpening::Device() {
    const std::lock_guard lock(mutex_);
    return device_;
}

void DeviceOpening::Answer(std::shared_ptr<SdlDevice> device) {
    const std::lock_guard lock(mutex_);
    device_ = std::move(device);
    done_ = true;
    answered_.notify_all();
}

} // namespace kalvo::audio
