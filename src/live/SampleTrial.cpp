#include "live/SampleTrial.h"

#include <QFile>

namespace kalvo {

void SampleTrial::Play(const QString& path) {
    Stop();
    stream_ = audio_.StreamOpenFile(audio::Output::Main, QFile::encodeName(path).toStdString());
    state_ = State::Opening;
}

void SampleTrial::Stop() {
    if (stream_ != 0)
        audio_.StreamFree(stream_);
    stream_ = 0;
    state_ = State::Idle;
}

bool SampleTrial::Tick() {
    if (state_ == State::Playing && audio_.ChannelIsActive(stream_) == audio::Activity::Stopped)
        Stop();
    if (state_ != State::Opening)
        return true;
    const audio::OpenState state = stream_ == 0 ? audio::OpenState::Failed : audio_.StreamAwaitOpen(stream_, 0);
    if (state == audio::OpenState::Failed) {
        Stop();
        return false;
    }
    if (state == audio::OpenState::Ready) {
        audio_.StreamPlay(stream_, true);
        state_ = State::Playing;
    }
    return true;
}

} // namespace kalvo
