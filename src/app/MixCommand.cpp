#include "app/MixCommand.h"

#include "app/WavFile.h"
#include "base/FaderLaw.h"
#include "base/FileName.h"
#include "base/PlayTime.h"
#include "base/RandomSource.h"
#include "playback/DeckTitles.h"
#include "playback/OfflineMix.h"

namespace kalvo {

namespace {

QString At(double seconds) {
    return QStringLiteral("%1 s").arg(seconds, 8, 'f', 2);
}

/** Fills both lists alternately; returns how many files are not there. */
int Fill(Playlist& list1, Playlist& list2, const QStringList& titles, QTextStream& report) {
    int missing = 0;
    QList<PlaylistEntry> entries[2];
    for (const QString& path : titles) {
        if (!FileExists(path)) {
            report << "Datei: " << path << " ist nicht mehr vorhanden!\n";
            ++missing;
            continue;
        }
        PlaylistEntry entry;
        entry.title = FileName::WithoutMusicExtension(FileName::Last(path));
        entry.path = path;
        QList<PlaylistEntry>& target = entries[0].size() <= entries[1].size() ? entries[0] : entries[1];
        target.append(entry);
    }
    list1.Append(entries[0]);
    list2.Append(entries[1]);
    return missing;
}

} // namespace

int RunMixCommand(std::unique_ptr<audio::AudioLibrary> library, const MixerOptions& options, const QString& output,
                  const QStringList& titles, QTextStream& report) {
    AudioLayer layer(std::move(library));
    if (!layer.InitAudio(audio::kOffline, 1024)) {
        report << "Error: Couldn't Initialize Digital Output\n";
        return 2;
    }
    WavFile file(output);
    if (!file.IsOpen()) {
        report << "Die Datei kann nicht geschrieben werden: " << output << "\n";
        return 2;
    }
    SystemRandom random;
    Playlist list1(1, random);
    Playlist list2(2, random);
    int leftOut = Fill(list1, list2, titles, report);
    int started = 0;
    Mixer mixer(layer, list1, list2);
    mixer.SetOptions(options);
    OfflineMix mix(mixer);
    QObject::connect(&mixer, &Mixer::TitleStarted, [&](int player, int row) {
        ++started;
        report << At(mix.Seconds()) << "  Player " << player << ": " << (player == 1 ? list1 : list2).At(row).title
               << " (" << PlayTime::Format(mixer.Title(player).length) << ")\n";
    });
    QObject::connect(&mixer, &Mixer::HandOverBegan, [&](int target) {
        report << At(mix.Seconds()) << "  Übergabe an Player " << target << " bei Sekunde "
               << mixer.State().Deck(OtherPlayer(target)).position << " von "
               << mixer.State().Deck(OtherPlayer(target)).length << "\n";
    });
    QObject::connect(&mixer, &Mixer::Message, [&](const QString& text) { report << text << "\n"; });
    mixer.Play(list1.IsEmpty() ? 2 : 1, -1);
    const bool rendered =
        mix.Run([&file](const float* stereo, std::size_t frames) { return file.Write(stereo, frames); });
    leftOut += list1.Count() + list2.Count() - started;
    if (started == 0 || !rendered || !file.Finish()) {
        report << "Es ist keine Mischung entstanden.\n";
        return 2;
    }
    report << At(mix.Seconds()) << "  fertig: " << output << "\n";
    return leftOut == 0 ? 0 : 1;
}

} // namespace kalvo
