#include "audio/SdlDevice.h"

#include "audio/Bus.h"

#include <SDL.h>

#include <algorithm>
#include <utility>

namespace kalvo::audio {

namespace {
constexpr auto kLongestPause = std::chrono::milliseconds(300);
constexpr auto kLongestStart = std::chrono::seconds(4); // wireless and virtual devices take their time at first
constexpr std::uint64_t kStartCallbacks = 16;
constexpr auto kLongestLook = std::chrono::milliseconds(60); // a control thread that was busy itself proves nothing
} // namespace

SdlDevice::SdlDevice(Bus& bus) : bus_(bus) {
    gate_.Close();
}

bool SdlDevice::Open(const std::string& name, int sampleRate, int bufferFrames) {
    SDL_AudioSpec wanted{};
    wanted.freq = sampleRate;
    wanted.format = AUDIO_F32SYS;
    wanted.channels = 2;
    wanted.samples = Uint16(bufferFrames);
    wanted.callback = &SdlDevice::Callback;
    wanted.userdata = this;
    SDL_AudioSpec got{};
    const SDL_AudioDeviceID id = SDL_OpenAudioDevice(name.empty() ? nullptr : name.c_str(), 0, &wanted, &got, 0);
    if (id == 0)
        return false;
    name_ = name;
    bufferFrames_ = got.samples;
    {
        const std::lock_guard lock(mutex_);
        id_ = id;
    }
    SDL_PauseAudioDevice(id, 0);
    return true;
}

void SdlDevice::Close() {
    std::uint32_t id = 0;
    {
        const std::lock_guard lock(mutex_);
        id = std::exchange(id_, 0);
    }
    if (id != 0)
        SDL_CloseAudioDevice(id);
}

void SdlDevice::Attach() {
    lastLook_ = Clock::now();
    silence_ = Clock::duration::zero();
    gate_.Open();
}

bool SdlDevice::Alive() const {
    const std::lock_guard lock(mutex_);
    return id_ != 0 && SDL_GetAudioDeviceStatus(id_) == SDL_AUDIO_PLAYING;
}

bool SdlDevice::Lost() {
    if (!Alive())
        return true;
    const auto now = Clock::now();
    const std::uint64_t callbacks = callbacks_.load(std::memory_order_relaxed);
    silence_ += std::min<Clock::duration>(now - std::exchange(lastLook_, now), kLongestLook);
    if (std::exchange(seenCallbacks_, callbacks) != callbacks)
        silence_ = Clock::duration::zero();
    return silence_ > (callbacks < kStartCallbacks ? Clock::duration(kLongestStart) : Clock::duration(kLongestPause));
}

void SdlDevice::Callback(void* user, std::uint8_t* bytes, int size) {
    static_cast<SdlDevice*>(user)->Fill(reinterpret_cast<float*>(bytes), std::size_t(size) / (2 * sizeof(float)));
}

void SdlDevice::Fill(float* stereo, std::size_t frames) {
    callbacks_.fetch_add(1, std::memory_order_relaxed);
    if (gate_.TryEnter()) {
        bus_.Render(stereo, frames);
        gate_.Leave();
    } else {
        std::fill_n(stereo, frames * 2, 0.0F);
    }
}

} // namespace kalvo::audio
