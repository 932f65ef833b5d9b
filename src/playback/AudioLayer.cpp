#include "playback/AudioLayer.h"

#include "playback/AudioModule.h"

#include <QFile>

#include <algorithm>
#include <cmath>

namespace kalvo {

namespace {

constexpr int kOutputRate = 44100;
constexpr int kLoadPatience = 3000; // ms

} // namespace

AudioLayer::AudioLayer(std::unique_ptr<audio::AudioLibrary> library) : library_(std::move(library)) {}

AudioLayer::~AudioLayer() {
    StopAudio();
}

QString AudioLayer::AudioVersion() const {
    return VersionText(library_->GetVersion());
}

bool AudioLayer::InitAudio(int outputDevice, int bufferFrames) {
    outputDevice_ = outputDevice;
    if (!library_->Init(audio::Output::Main, outputDevice_, kOutputRate, bufferFrames)) {
        outputDevice_ = audio::kDefaultDevice;
        if (!library_->Init(audio::Output::Main, outputDevice_, kOutputRate, bufferFrames)) {
            return false;
        }
    }
    audio::OutputInfo info;
    directSound8_ = library_->GetInfo(audio::Output::Main, info) && info.directSoundVersion >= 8 ? 1 : 0;
    watch_.Begin(info);
    return true;
}

std::optional<OutputNews> AudioLayer::LookAtOutput() {
    audio::OutputInfo info;
    return library_->GetInfo(audio::Output::Main, info) ? watch_.Look(info) : std::nullopt;
}

void AudioLayer::StopAudio() {
    library_->Stop(audio::Output::Main);
    for (const int player : {1, 2}) {
        FreeStream(player);
        Prepare(player, {});
    }
    library_->Free(audio::Output::Main);
}

QStringList AudioLayer::DeviceNames() {
    QStringList names;
    for (int device = 0;; ++device) {
        const std::string name = library_->GetDeviceDescription(device);
        if (name.empty()) {
            return names;
        }
        names.append(QString::fromStdString(name));
    }
}

audio::Handle AudioLayer::LoadStream(int player, const QString& path) {
    BeginLoading(player, path);
    return AwaitLoaded(player);
}

audio::Handle AudioLayer::LoadHeld(int player, const audio::HeldFile& file) {
    FreeStream(player);
    PlayerRecord& record = Record(player);
    record.stream = library_->StreamOpenHeld(audio::Output::Main, file);
    record.opening = record.stream != 0;
    return AwaitLoaded(player);
}

audio::Handle AudioLayer::AwaitLoaded(int player) {
    if (AwaitLoading(player, kLoadPatience) == audio::OpenState::Opening) {
        FreeStream(player);
    }
    return Record(player).stream;
}

audio::Handle AudioLayer::BeginLoading(int player, const QString& path) {
    PlayerRecord& record = Record(player);
    FreeStream(player);
    if (record.prepared != 0 && record.preparedPath == path) {
        record.stream = record.prepared;
        record.prepared = 0;
        record.preparedPath.clear();
    } else {
        record.stream = library_->StreamOpenFile(audio::Output::Main, QFile::encodeName(path).toStdString());
    }
    record.opening = record.stream != 0;
    return record.stream;
}

audio::OpenState AudioLayer::AwaitLoading(int player, int milliseconds) {
    PlayerRecord& record = Record(player);
    if (!record.opening) {
        return record.stream == 0 ? audio::OpenState::Failed : audio::OpenState::Ready;
    }
    const audio::OpenState state = library_->StreamAwaitOpen(record.stream, milliseconds);
    if (state == audio::OpenState::Opening) {
        return state;
    }
    record.opening = false;
    if (state == audio::OpenState::Failed) {
        record.stream = 0;
        return state;
    }
    ApplyPitch(player);
    AddEffects(record);
    return state;
}

void AudioLayer::FreeStream(int player) {
    PlayerRecord& record = Record(player);
    if (record.stream != 0) {
        library_->ChannelStop(record.stream);
        library_->StreamFree(record.stream);
    }
    record.stream = 0;
    record.opening = false;
    record.state = PlayState::Empty;
    record.pitchFreq = 0;
    record.eqFx.fill(0);
}

void AudioLayer::Prepare(int player, const QString& path) {
    PlayerRecord& record = Record(player);
    if (record.preparedPath == path) {
        return;
    }
    if (record.prepared != 0) {
        library_->StreamFree(record.prepared);
    }
    record.preparedPath = path;
    record.prepared =
        path.isEmpty() ? 0 : library_->StreamOpenFile(audio::Output::Main, QFile::encodeName(path).toStdString());
}

audio::OpenState AudioLayer::Prepared(int player) {
    PlayerRecord& record = Record(player);
    if (record.prepared == 0) {
        return audio::OpenState::Failed;
    }
    const audio::OpenState state = library_->StreamAwaitOpen(record.prepared, 0);
    if (state == audio::OpenState::Failed) {
        record.prepared = 0;
    }
    return state;
}

void AudioLayer::SetPlayerVolume(int player, int volume) {
    const PlayerRecord& record = Record(player);
    if (record.stream != 0) {
        library_->ChannelSetAttributes(record.stream, audio::kKeepFrequency, volume, audio::kKeepPan);
    }
}

void AudioLayer::SlidePlayerVolume(int player, int volume, int milliseconds) {
    const PlayerRecord& record = Record(player);
    if (record.stream != 0) {
        library_->ChannelSlideAttributes(record.stream, audio::kKeepFrequency, volume, audio::kKeepPan, milliseconds);
    }
}

void AudioLayer::SetGain(int player, double decibel) {
    if (const audio::Handle stream = Record(player).stream; stream != 0)
        library_->ChannelSetGain(stream, static_cast<float>(decibel));
}

void AudioLayer::SetPitch(int player, int pitch) {
    Record(player).pitch = pitch;
    ApplyPitch(player);
}

void AudioLayer::ApplyPitch(int player) {
    PlayerRecord& record = Record(player);
    audio::ChannelInfo info;
    if (record.stream == 0 || !library_->ChannelGetInfo(record.stream, info)) {
        return;
    }
    record.pitchFreq = static_cast<int>(std::lround(info.sampleRate * PitchRatio(record.pitch)));
    library_->ChannelSetAttributes(record.stream, record.pitchFreq, audio::kKeepVolume, 0);
}

void AudioLayer::AddEffects(PlayerRecord& record) {
    if (!equaliser_.on || directSound8_ == 0) {
        return;
    }
    for (audio::Handle& effect : record.eqFx) {
        const bool isReverb = &effect == &record.eqFx.back();
        effect = library_->ChannelSetFX(record.stream,
                                        isReverb ? audio::EffectType::Reverb : audio::EffectType::EqualiserBand);
    }
    SetEffects(record);
}

void AudioLayer::SetEffects(const PlayerRecord& record) {
    for (int band = 0; band < kEqualiserBands; ++band) {
        library_->FXSetParameters(record.eqFx.at(static_cast<std::size_t>(band)), equaliser_.Band(band));
    }
    library_->FXSetParameters(record.eqFx.back(), equaliser_.Reverb());
}

void AudioLayer::RemoveEffects(PlayerRecord& record) {
    for (audio::Handle& effect : record.eqFx) {
        if (effect != 0) {
            library_->ChannelRemoveFX(record.stream, effect);
        }
        effect = 0;
    }
}

void AudioLayer::SetEqualiser(const EqualiserSettings& settings) {
    equaliser_ = settings;
    for (PlayerRecord& record : records_) {
        if (record.stream == 0 || record.opening) {
            continue;
        }
        if (record.eqFx.back() == 0) {
            AddEffects(record);
        } else if (settings.on) {
            SetEffects(record);
        } else {
            RemoveEffects(record);
        }
    }
}

audio::Activity AudioLayer::Activity(int player) {
    const audio::Handle stream = Record(player).stream;
    return stream == 0 ? audio::Activity::Stopped : library_->ChannelIsActive(stream);
}

double AudioLayer::PositionSeconds(int player) {
    const audio::Handle stream = Record(player).stream;
    return stream == 0 ? 0 : library_->ChannelBytes2Seconds(stream, library_->ChannelGetPosition(stream));
}

double AudioLayer::LengthSeconds(int player) {
    const audio::Handle stream = Record(player).stream;
    return stream == 0 ? 0 : library_->ChannelBytes2Seconds(stream, library_->StreamGetLength(stream));
}

void AudioLayer::SetPositionSeconds(int player, double seconds) {
    const audio::Handle stream = Record(player).stream;
    if (stream == 0) {
        return;
    }
    const std::uint64_t wanted = library_->ChannelSeconds2Bytes(stream, std::max(0.0, seconds));
    library_->ChannelSetPosition(stream, std::min(wanted, library_->StreamGetLength(stream)));
}

} // namespace kalvo
