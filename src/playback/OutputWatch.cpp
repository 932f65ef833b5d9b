#include "playback/OutputWatch.h"

namespace kalvo {

namespace {

/** Looks: a second. */
constexpr int kPatience = 20;

} // namespace

void OutputWatch::Begin(const audio::OutputInfo& chosen) {
    chosen_ = playing_ = QString::fromStdString(chosen.deviceName);
    state_ = State::Chosen;
    missing_ = 0;
}

std::optional<OutputNews> OutputWatch::Look(const audio::OutputInfo& now) {
    const QString name = QString::fromStdString(now.deviceName);
    if (name != chosen_ && now.device == audio::kNoSound) {
        return Silent();
    }
    missing_ = 0;
    return name == chosen_ ? Returned() : PlaysOn(name);
}

std::optional<OutputNews> OutputWatch::Returned() {
    if (state_ == State::Chosen) {
        return std::nullopt;
    }
    state_ = State::Chosen;
    playing_ = chosen_;
    return OutputNews{OutputNews::Kind::Back, QStringLiteral("Soundkarte wieder da: ") + chosen_};
}

std::optional<OutputNews> OutputWatch::Silent() {
    if (state_ == State::Lost || ++missing_ < kPatience) {
        return std::nullopt;
    }
    state_ = State::Lost;
    return OutputNews{OutputNews::Kind::Lost, QStringLiteral("Soundkarte nicht mehr da, kein Ton: ") + playing_};
}

std::optional<OutputNews> OutputWatch::PlaysOn(const QString& name) {
    if (state_ == State::Replaced && name == playing_) {
        return std::nullopt;
    }
    state_ = State::Replaced;
    playing_ = name;
    return OutputNews{OutputNews::Kind::Replaced, QStringLiteral("Soundkarte nicht mehr da, Wiedergabe auf: ") + name};
}

} // namespace kalvo
