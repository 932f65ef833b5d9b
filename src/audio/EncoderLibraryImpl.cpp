#include "audio/EncoderLibraryImpl.h"

#include "audio/SoundFileWriter.h"

#include <utility>

namespace kalvo::audio {

namespace {
constexpr auto kStopTimeout = std::chrono::seconds(2);
}

EncoderLibraryImpl::EncoderLibraryImpl(SinkOpener opener) : opener_(std::move(opener)) {}

EncoderLibraryImpl::~EncoderLibraryImpl() {
    for (auto& [handle, recording] : recordings_)
        Detach(recording);
    const auto deadline = std::chrono::steady_clock::now() + kStopTimeout;
    for (auto& [handle, recording] : recordings_) {
        const auto left = deadline - std::chrono::steady_clock::now();
        recording.encoder->AwaitEnd(std::chrono::duration_cast<std::chrono::milliseconds>(left));
    }
}

bool EncoderLibraryImpl::Report(EncodeError error) {
    error_ = error;
    return error == EncodeError::None;
}

Handle EncoderLibraryImpl::Encode_Start(AudioLibrary& audio, Output output, const std::string& path,
                                        const EncodeSettings& settings) {
    OutputInfo info;
    return Start(audio, output, audio.GetInfo(output, info) ? info.sampleRate : 0, path, settings);
}

Handle EncoderLibraryImpl::Encode_Start(AudioLibrary& audio, Handle stream, const std::string& path,
                                        const EncodeSettings& settings) {
    ChannelInfo info;
    return Start(audio, stream, audio.ChannelGetInfo(stream, info) ? info.outputRate : 0, path, settings);
}

template<class Source>
Handle EncoderLibraryImpl::Start(AudioLibrary& audio, Source source, int rate, const std::string& path,
                                 const EncodeSettings& settings) {
    if (!Report(Usable(settings) ? EncodeError::None : EncodeError::Argument) ||
        !Report(rate > 0 ? EncodeError::None : EncodeError::Source))
        return 0;
    EncodeError error = EncodeError::None;
    auto encoder = Encoder::Start(opener_, path, settings, rate, error);
    if (!Report(error))
        return 0;
    if (!audio.AddSink(source, *encoder)) {
        encoder->Discard();
        Report(EncodeError::Source);
        return 0;
    }
    recordings_.emplace(++lastHandle_, Recording{&audio, std::move(encoder)});
    return lastHandle_;
}

void EncoderLibraryImpl::Detach(Recording& recording) {
    if (recording.audio != nullptr && !recording.encoder->IsSourceGone())
        recording.audio->RemoveSink(*recording.encoder);
    recording.audio = nullptr;
    recording.encoder->Finish();
}

bool EncoderLibraryImpl::Encode_Stop(Handle recording) {
    const auto found = recordings_.find(recording);
    if (found == recordings_.end())
        return Report(EncodeError::InvalidHandle);
    Detach(found->second);
    if (!found->second.encoder->AwaitEnd(kStopTimeout))
        return Report(EncodeError::Timeout);
    const EncodeError error = found->second.encoder->State().error;
    recordings_.erase(found);
    return Report(error);
}

bool EncoderLibraryImpl::Encode_GetState(Handle recording, EncodeState& state) {
    const auto found = recordings_.find(recording);
    if (found == recordings_.end())
        return Report(EncodeError::InvalidHandle);
    state = found->second.encoder->State();
    return Report(EncodeError::None);
}

} // namespace kalvo::audio
