#include "playback/TimelineAudio.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace kalvo {

namespace {

using audio::Activity;
using audio::Handle;

constexpr int kTimelineRate = 44100;
constexpr double kBytes = 4.0 * kTimelineRate; ///< a second

std::uint64_t Bytes(double seconds) {
    return static_cast<std::uint64_t>(std::llround(seconds * kTimelineRate)) * 4;
}

} // namespace

void TimelineAudio::Advance(double seconds) {
    ++steps_;
    for (auto& [handle, stream] : streams_) {
        if (stream.activity != Activity::Playing)
            continue;
        stream.position = std::min(stream.length, stream.position + seconds * stream.speed);
        if (stream.position >= stream.length) {
            stream.ended = true;
            stream.activity = Activity::Stopped;
        }
    }
}

TimelineAudio::Stream* TimelineAudio::Find(Handle stream) {
    const auto found = streams_.find(stream);
    return found == streams_.end() ? nullptr : &found->second;
}

bool TimelineAudio::GetInfo(audio::Output, audio::OutputInfo& info) const {
    info = {};
    info.device = audio::kOffline;
    info.sampleRate = kTimelineRate;
    info.callbacks = steps_;
    return true;
}

Handle TimelineAudio::StreamCreateFile(audio::Output, const std::string& path) {
    Stream stream;
    stream.length = length_(path);
    if (stream.length <= 0)
        return 0;
    streams_.emplace(++last_, stream);
    return last_;
}

bool TimelineAudio::StreamPlay(Handle stream, bool fromStart) {
    if (Stream* found = Find(stream); found != nullptr && fromStart)
        found->position = 0;
    return Become(stream, Activity::Playing);
}

bool TimelineAudio::Become(Handle stream, Activity activity) {
    Stream* const found = Find(stream);
    if (found != nullptr)
        found->activity = activity;
    return found != nullptr;
}

std::uint64_t TimelineAudio::StreamGetLength(Handle stream) {
    const Stream* const found = Find(stream);
    return found == nullptr ? 0 : Bytes(found->length);
}

double TimelineAudio::ChannelBytes2Seconds(Handle, std::uint64_t bytes) {
    return static_cast<double>(bytes) / kBytes;
}

std::uint64_t TimelineAudio::ChannelSeconds2Bytes(Handle, double seconds) {
    return Bytes(std::max(0.0, seconds));
}

std::uint64_t TimelineAudio::ChannelGetPosition(Handle stream) {
    const Stream* const found = Find(stream);
    return found == nullptr ? 0 : Bytes(found->position);
}

bool TimelineAudio::ChannelSetPosition(Handle stream, std::uint64_t bytes) {
    if (Stream* found = Find(stream))
        found->position = std::min(found->length, static_cast<double>(bytes) / kBytes);
    return true;
}

Activity TimelineAudio::ChannelIsActive(Handle stream) {
    const Stream* const found = Find(stream);
    return found == nullptr ? Activity::Stopped : found->activity;
}

bool TimelineAudio::ChannelGetInfo(Handle stream, audio::ChannelInfo& info) {
    info.sampleRate = kTimelineRate;
    info.outputRate = kTimelineRate;
    return Find(stream) != nullptr;
}

bool TimelineAudio::ChannelSetAttributes(Handle stream, int frequency, int, int) {
    if (Stream* found = Find(stream); found != nullptr && frequency != audio::kKeepFrequency)
        found->speed = static_cast<double>(frequency) / kTimelineRate;
    return true;
}

Handle TimelineAudio::ChannelSetSync(Handle stream, std::uint32_t type, std::uint64_t, audio::SyncProcedure procedure,
                                     void* user) {
    Stream* const found = Find(stream);
    if (found != nullptr && (type & ~audio::kOneTime) == static_cast<std::uint32_t>(audio::SyncType::End)) {
        found->onEnd = procedure;
        found->user = user;
    }
    return 1;
}

void TimelineAudio::DispatchEvents() {
    std::vector<Handle> ended;
    for (auto& [handle, stream] : streams_) {
        if (std::exchange(stream.ended, false))
            ended.push_back(handle);
    }
    for (const Handle handle : ended) {
        const Stream* const stream = Find(handle); // a procedure may have freed it
        if (stream != nullptr && stream->onEnd != nullptr)
            stream->onEnd(1, handle, 0, stream->user);
    }
}

} // namespace kalvo
