#include "playback/PlayThrough.h"

#include "base/FaderLaw.h"
#include "playback/Mixer.h"

namespace kalvo {

PlayThrough::PlayThrough(Mixer& mixer, Playlist& first, Playlist& second, QObject* parent)
    : QObject(parent), mixer_(mixer), first_(first), second_(second) {
    timer_.setObjectName(QStringLiteral("TimerAnspielen"));
    connect(&timer_, &QTimer::timeout, this, &PlayThrough::Tick);
    connect(&mixer, &Mixer::ListenedToEnd, this, [this](int player) {
        if (player == player_) {
            Tick();
        }
    });
    // Later: a piece is stopped before the next one starts.
    connect(&mixer, &Mixer::PlayerChanged, this, &PlayThrough::Look, Qt::QueuedConnection);
}

int PlayThrough::SecondsOf(const QString& setting) {
    const int seconds = setting.toInt();
    return seconds > 0 ? seconds : defaultSeconds;
}

Playlist& PlayThrough::List() {
    return player_ == 2 ? second_ : first_;
}

void PlayThrough::Begin(int player, int seconds) {
    End();
    if ((player == 2 ? second_ : first_).IsEmpty()) {
        return;
    }
    player_ = player;
    mixer_.BeginListening();
    mixer_.SetFader(FaderEndOf(player));
    timer_.setInterval(seconds * 1000);
    Q_EMIT Changed();
    PlayFrom(0);
}

void PlayThrough::Tick() {
    if (player_ != 0) {
        PlayFrom(RowAfterPiece());
    }
}

/** The list may have been sorted or thinned out meanwhile; of an entry that is gone the next has moved up. */
int PlayThrough::RowAfterPiece() {
    const int row = List().FindEntry(entry_);
    return row < 0 ? row_ : row + 1;
}

void PlayThrough::PlayFrom(int row) {
    Q_EMIT Beginning();
    for (; row < List().Count(); ++row) {
        const PlaylistEntry& entry = List().At(row);
        row_ = row;
        entry_ = entry.id;
        if (!mixer_.HasFile(entry.path) ||
            !mixer_.PlayListened(player_, {entry.title, entry.artist, {}, entry.path}, QStringLiteral("scan"))) {
            continue;
        }
        timer_.start();
        Q_EMIT Selected(player_, row);
        return;
    }
    End();
}

void PlayThrough::End() {
    if (player_ != 0) {
        const int player = player_;
        EndHere();
        mixer_.EndListening(player);
    }
}

void PlayThrough::Abandon() {
    if (player_ != 0) {
        EndHere();
    }
}

void PlayThrough::EndHere() {
    timer_.stop();
    player_ = 0;
    Q_EMIT Changed();
}

void PlayThrough::Look() {
    if (player_ == 0 || mixer_.IsListened(player_)) {
        return;
    }
    const bool other = mixer_.Activity(player_) == audio::Activity::Playing || mixer_.IsOpening(player_);
    if (!other) {
        End();
        return;
    }
    EndHere();
    mixer_.LeaveListening();
}

} // namespace kalvo
