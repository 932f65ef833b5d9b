#include "playback/RehearsalDesk.h"

#include "playback/PlayerRecord.h"

#include <QStringList>

#include <algorithm>
#include <chrono>
#include <utility>

namespace kalvo {

namespace {

constexpr int kRehearsalFrames = 1024;

} // namespace

DeskMoment DeskMoment::Of(Mixer& mixer, const Playlist& list1, const Playlist& list2) {
    DeskMoment moment;
    moment.lists = {list1.State(), list2.State()};
    moment.fader = mixer.Fader();
    const int step = mixer.State().fadeStep;
    moment.fadeTarget = step == 0 ? 0 : step < 0 ? 1 : 2;
    for (const int player : {1, 2}) {
        Deck& deck = moment.decks.at(static_cast<std::size_t>(player - 1));
        deck.pitch = mixer.Pitch(player);
        if (mixer.IsListened(player))
            continue;
        deck.title = mixer.Title(player);
        deck.activity = mixer.Activity(player);
        deck.second = mixer.PositionSeconds(player);
    }
    return moment;
}

QString RehearsalSettings::Fingerprint() const {
    QStringList parts{FadeModeText(mixing.mode),
                      QString::number(mixing.fadeInterval),
                      QString::number(mixing.switchOver),
                      QString::number(int(mixing.continuous)),
                      QString::number(int(mixing.automatic)),
                      QString::number(int(useCuePoints)),
                      QString::number(int(equaliser.on)),
                      QString::number(equaliser.reverb)};
    for (const int band : equaliser.bands)
        parts.append(QString::number(band));
    return parts.join(u' ');
}

RehearsalDesk::RehearsalDesk(std::unique_ptr<audio::AudioLibrary> library, const RehearsalSettings& settings)
    : layer_(std::move(library)),
      open_(layer_.InitAudio(audio::kOffline, kRehearsalFrames)),
      list1(1, random_),
      list2(2, random_),
      mixer(layer_, list1, list2) {
    layer_.SetEqualiser(settings.equaliser);
    mixer.SetOptions(settings.mixing);
    mixer.SetUseCuePoints(settings.useCuePoints);
    mixer.SetPatience(std::chrono::seconds(10)); // nobody waits for it
    mixer.SetTitleGain([gains = settings.gains](const QString& path) { return gains.value(path, 0); });
}

void RehearsalDesk::Begin(const DeskMoment& moment, double earlier) {
    list1.Restore(moment.lists[0]);
    list2.Restore(moment.lists[1]);
    mixer.SetFader(moment.fader);
    bool plays = false;
    for (const int player : {1, 2}) {
        const DeskMoment::Deck& deck = moment.At(player);
        mixer.SetPitch(player, deck.pitch);
        if (deck.activity == audio::Activity::Stopped)
            continue;
        const bool paused = deck.activity == audio::Activity::Paused;
        const double back = paused ? 0 : earlier * PitchRatio(deck.pitch);
        plays = (mixer.ResumeTitle(player, deck.title, std::max(0.0, deck.second - back), paused) && !paused) || plays;
    }
    if (!plays)
        mixer.Play(list1.IsEmpty() ? 2 : 1, -1);
    else if (moment.fadeTarget != 0)
        mixer.FadeTo(moment.fadeTarget, -1);
}

} // namespace kalvo
