#include "playback/PreListening.h"

#include "base/FaderLaw.h"
#include "playback/Mixer.h"

#include <utility>

namespace kalvo {

namespace {

constexpr int kPlayer = 1; // what is pre-listened to plays here

} // namespace

PreListening::PreListening(Mixer& mixer, QObject* parent) : QObject(parent), mixer_(mixer) {
    timer7_.setObjectName(QStringLiteral("Timer7"));
    timer7_.setInterval(interval);
    timer7_.setTimerType(Qt::PreciseTimer);
    connect(&timer7_, &QTimer::timeout, this, &PreListening::Tick);
    // Later: whoever has stopped the player may be about to start something else on it.
    connect(&mixer, &Mixer::PlayerChanged, this, &PreListening::Look, Qt::QueuedConnection);
    connect(&mixer, &Mixer::FadedTo, this, &PreListening::FadedTo);
    connect(&mixer, &Mixer::WantedBack, this, &PreListening::End);
}

QString PreListening::Source() const {
    return playing_ ? QStringLiteral("Probehoeren") : QStringLiteral("Player");
}

QString PreListening::Caption() {
    return QStringLiteral("Player 1       Probehören aus Musikarchiv");
}

QString PreListening::MissingText() {
    return QStringLiteral("Datei nicht gefunden");
}

void PreListening::Ask(const DeckTitle& title) {
    if (!mixer_.HasFile(title.path)) {
        Q_EMIT FileMissing();
        return;
    }
    title_ = title;
    if (IsFading()) {
        return;
    }
    const auto runs = [this](int player) {
        return mixer_.Activity(player) == audio::Activity::Playing && !mixer_.IsMuted(player);
    };
    mode_ = PreListenModeOf(runs(1), runs(2));
    faded_ = PlayerToFadeOut(mode_, mixer_.Fader());
    counter_ = 0;
    mixer_.BeginListening();
    timer7_.start();
    if (faded_ != 0) {
        Q_EMIT Told(QStringLiteral("Probehören: Player %1 wird ausgeblendet, Wiedergabe holt ihn zurück.").arg(faded_));
    }
    Q_EMIT Changed();
}

void PreListening::Tick() {
    if (!IsFading()) {
        return;
    }
    ++counter_;
    const bool silent = faded_ == 0 || mixer_.Activity(faded_) != audio::Activity::Playing;
    if (!silent) {
        mixer_.LimitVolume(faded_, steps - counter_, interval);
    }
    if (!silent && counter_ < steps) {
        return;
    }
    playing_ = Begin();
    StopFading();
    if (!playing_) {
        mixer_.EndListening(kPlayer);
    }
    Q_EMIT Changed();
}

bool PreListening::Begin() {
    Q_EMIT Beginning();
    if (!mixer_.HasFile(title_.path)) {
        Q_EMIT FileMissing();
        return false;
    }
    mixer_.Layer().FreeStream(kPlayer);
    mixer_.SetFader(FaderEndOf(kPlayer));
    if (faded_ == kPlayer) {
        mixer_.LimitVolume(kPlayer, steps, 0);
    }
    return mixer_.PlayListened(kPlayer, title_);
}

/** The player's volume is the fader's again. */
void PreListening::StopFading() {
    timer7_.stop();
    counter_ = 0;
    if (const int player = std::exchange(faded_, 0); player != 0) {
        mixer_.LimitVolume(player, steps, interval);
    }
}

void PreListening::End() {
    if (IsFading()) {
        StopFading();
        if (playing_) {
            Q_EMIT Changed();
            return; // back to the title that is pre-listened to
        }
        mixer_.LeaveListening();
    } else if (std::exchange(playing_, false)) {
        mixer_.EndListening(kPlayer);
    }
    Q_EMIT Changed();
}

void PreListening::Abandon() {
    if (IsFading() || playing_) {
        StopFading();
        playing_ = false;
        Q_EMIT Changed();
    }
}

void PreListening::Look() {
    if (!playing_ || mixer_.IsListened(kPlayer)) {
        return;
    }
    playing_ = false;
    const bool other = mixer_.Activity(kPlayer) == audio::Activity::Playing || mixer_.IsOpening(kPlayer);
    if (IsFading()) { // the next one has been asked for already
        return;
    }
    if (other) {
        mixer_.LeaveListening();
    } else {
        mixer_.EndListening(kPlayer);
    }
    Q_EMIT Changed();
}

void PreListening::FadedTo(int player) {
    if (IsFading()) {
        StopFading();
    } else if (!playing_ || player == kPlayer) {
        return;
    }
    playing_ = false;
    mixer_.LeaveListening();
    Q_EMIT Changed();
}

} // namespace kalvo
