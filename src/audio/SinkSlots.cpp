#include "audio/SinkSlots.h"

namespace kalvo::audio {

void SinkSlots::Put(Slot& slot, SoundSink* sink) {
    slot.gate.Close();
    slot.sink = sink;
    slot.gate.Open();
    used_.fetch_add(sink != nullptr ? 1U : ~0U, std::memory_order_relaxed);
}

bool SinkSlots::Add(SoundSink& sink) {
    for (Slot& slot : slots_) {
        if (slot.sink == nullptr) {
            Put(slot, &sink);
            return true;
        }
    }
    return false;
}

void SinkSlots::Remove(const SoundSink& sink) {
    for (Slot& slot : slots_) {
        if (slot.sink == &sink)
            Put(slot, nullptr);
    }
}

void SinkSlots::Release() {
    for (Slot& slot : slots_) {
        SoundSink* sink = slot.sink;
        if (sink == nullptr)
            continue;
        Put(slot, nullptr);
        sink->SourceGone();
    }
}

void SinkSlots::Write(const float* stereo, std::size_t frames) noexcept {
    if (used_.load(std::memory_order_relaxed) == 0 || frames == 0)
        return;
    for (Slot& slot : slots_) {
        if (!slot.gate.TryEnter())
            continue;
        if (slot.sink != nullptr)
            slot.sink->Write(stereo, frames);
        slot.gate.Leave();
    }
}

void SinkSlots::WaitForRoom(std::size_t frames) {
    for (Slot& slot : slots_) {
        if (slot.sink != nullptr)
            slot.sink->WaitForRoom(frames);
    }
}

} // namespace kalvo::audio
