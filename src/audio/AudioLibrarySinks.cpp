// The sinks' part of the audio library; everything else is in AudioLibraryImpl.cpp.
#include "audio/AudioLibraryImpl.h"

#include <utility>
#include <vector>

namespace kalvo::audio {

bool AudioLibraryImpl::AddSink(Output output, SoundSink& sink) {
    OutputPort* port = Find(output);
    if (port == nullptr)
        return false;
    if (sink.SampleRate() != port->TheBus().SampleRate() || !port->TheBus().Sinks().Add(sink))
        return Report(ErrorCode::Argument);
    Slot(output).sinks.push_back(&sink);
    return true;
}

bool AudioLibraryImpl::AddSink(Handle stream, SoundSink& sink) {
    Channel* channel = Find(stream);
    if (channel == nullptr)
        return false;
    const int rate = Slot(channel->TheOutput()).port->TheBus().SampleRate();
    return Report(sink.SampleRate() == rate && channel->TheVoice().Sinks().Add(sink) ? ErrorCode::None
                                                                                     : ErrorCode::Argument);
}

void AudioLibraryImpl::RemoveSink(SoundSink& sink) {
    for (OutputSlot& slot : outputs_) {
        std::erase(slot.sinks, &sink);
        if (slot.port)
            slot.port->TheBus().Sinks().Remove(sink);
    }
    for (const auto& [handle, channel] : channels_)
        channel->TheVoice().Sinks().Remove(sink);
}

// Those of another rate cannot go on.
void AudioLibraryImpl::TakeSinksAlong(OutputSlot& slot) {
    Bus& bus = slot.port->TheBus();
    for (SoundSink* sink : std::exchange(slot.sinks, {})) {
        if (sink->SampleRate() == bus.SampleRate() && bus.Sinks().Add(*sink))
            slot.sinks.push_back(sink);
        else
            sink->SourceGone();
    }
}

} // namespace kalvo::audio
