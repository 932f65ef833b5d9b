#include "playback/PlayCounter.h"

#include "archive/Archive.h"
#include "playback/Mixer.h"

#include <chrono>
#include <cmath>
#include <utility>

namespace kalvo {

namespace {

constexpr std::chrono::seconds interval(1);

PlayOrigin OriginOf(EntryOrigin origin) {
    switch (origin) {
    case EntryOrigin::Wish:
        return PlayOrigin::Wish;
    case EntryOrigin::Automatic:
        return PlayOrigin::Automatic;
    case EntryOrigin::Player:
        break;
    }
    return PlayOrigin::Player;
}

} // namespace

PlayCounter::PlayCounter(Mixer& mixer, Playlist& first, Playlist& second, Books books, const Clock& clock,
                         QObject* parent)
    : QObject(parent), mixer_(mixer), books_(books), clock_(clock) {
    timer3_.setObjectName(QStringLiteral("Timer3"));
    timer3_.setInterval(interval);
    connect(&timer3_, &QTimer::timeout, this, &PlayCounter::Tick);
    connect(&mixer, &Mixer::TitleStarted, this, [this, &first, &second](int player, int row, bool byHand) {
        TitleStarted(player, (player == 2 ? second : first).At(row), byHand);
    });
    connect(&mixer, &Mixer::FadedTo, this, &PlayCounter::FadedTo);
    connect(&mixer, &Mixer::PlayerChanged, this, &PlayCounter::EndIfStopped);
}

PlayCounter::~PlayCounter() {
    End(1);
    End(2);
}

void PlayCounter::StopTimer3() {
    for (OnPlayer& player : players_) {
        if (player.heard)
            player.heard->isDue = false;
    }
}

void PlayCounter::Tick() {
    for (const int player : {1, 2}) {
        std::optional<Heard>& heard = On(player).heard;
        if (!heard || mixer_.Activity(player) != audio::Activity::Playing)
            continue;
        ++heard->seconds;
        if (!heard->isCounted && heard->isDue && heard->seconds >= secondsByHand)
            Count(*heard);
    }
}

void PlayCounter::TitleStarted(int player, const PlaylistEntry& entry, bool byHand) {
    End(player);
    Heard heard;
    heard.title = {EveningLog::StartAt(clock_.Now()),
                   OriginOf(entry.origin),
                   player,
                   entry.artist,
                   entry.title,
                   static_cast<int>(std::lround(mixer_.Title(player).length)),
                   -1,
                   entry.path};
    On(player).heard = heard;
    timer3_.start();
    if (std::exchange(On(player).fadedTo, false) || !byHand)
        Count(*On(player).heard);
}

void PlayCounter::FadedTo(int player) {
    std::optional<Heard>& heard = On(player).heard;
    if (heard && !heard->isCounted && heard->isDue)
        Count(*heard);
    On(player).fadedTo = mixer_.IsOpening(player);
}

void PlayCounter::Count(Heard& heard) {
    heard.isCounted = true;
    heard.title.path = mixer_.Title(heard.title.player).path; // the file may have been moved since the start
    mixer_.Layer().Record(heard.title.player).state = PlayState::Counted;
    const PlayedTitle& title = heard.title;
    const PlaySource source = title.player == 2 ? PlaySource::Player2 : PlaySource::Player1;
    if (!books_.charts.Count(source, title.path, title.title, title.artist, clock_.Now()))
        Q_EMIT Told(QStringLiteral("Die Charts konnten nicht geschrieben werden."));
    if (!books_.evening.Write(title))
        Q_EMIT Told(QStringLiteral("Der Verlauf des Abends konnte nicht geschrieben werden."));
    Stamp(heard);
    Q_EMIT Counted(title);
}

/** An archive that cannot be searched or written now is passed over. */
void PlayCounter::Stamp(const Heard& heard) {
    std::optional<TitleRecord> record = books_.archive.FindByPath(heard.title.path);
    if (!record)
        return;
    record->Extra2 = LastPlayedStamp(clock_.Now());
    books_.archive.UpdateRecord(*record);
}

void PlayCounter::EndIfStopped(int player) {
    if (mixer_.Activity(player) != audio::Activity::Stopped)
        return;
    End(player);
    On(player).fadedTo = On(player).fadedTo && mixer_.IsOpening(player);
}

void PlayCounter::End(int player) {
    const std::optional<Heard> heard = std::exchange(On(player).heard, std::nullopt);
    if (!players_[0].heard && !players_[1].heard)
        timer3_.stop();
    if (!heard || !heard->isCounted)
        return;
    PlayedTitle title = heard->title;
    title.played = heard->seconds;
    books_.evening.Write(title);
    Q_EMIT Ended();
}

} // namespace kalvo
