#include "app/DemoTitles.h"

#include "app/DemoSynth.h"

#include <QByteArray>
#include <QDir>
#include <QFile>

#include <sndfile.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <memory>
#include <thread>
#include <vector>

namespace kalvo {

namespace {

struct DemoTitle {
    const char* title;
    const char* artist;
    const char* album;
    const char* genre;
    const char* year;
    DemoTune tune;
};

constexpr std::array<DemoTitle, 12> kTitles{{
    {"Sommer in der Stadt", "Nordlicht Kapelle", "Fahrplan", "Pop", "2012", {118, 57, {0, -109, 5, 7}, 12}},
    {"Blaue Stunde", "Mara Lind", "Regen auf Glas", "Pop", "2018", {96, 60, {-109, 5, 0, 7}, 10}},
    {"Tanz mit mir durch die Nacht",
     "Juno & Kaiser",
     "Großes Kino",
     "Disco",
     "2022",
     {124, 55, {-100, -105, 8, 10}, 12}},
    {"Über den Dächern", "Die Dachterrassen", "Über der Stadt", "Schlager", "2015", {112, 62, {0, 5, -109, 7}, 12}},
    {"Nachtzug nach Norden", "Nordlicht Kapelle", "Fahrplan", "Rock", "2012", {132, 52, {-100, 8, 3, 10}, 14}},
    {"Schöner Schein", "Anna Bergström", "Lichter der Autobahn", "Deutschpop", "2019", {104, 59, {0, 7, 5, -109}, 11}},
    {"Mach's gut, Müller", "Die Dachterrassen", "Über der Stadt", "Schlager", "2015", {128, 60, {0, 0, 5, 7}, 13}},
    {"Radio Silence", "Low Tide Society", "Signals", "House", "2021", {122, 53, {-100, -103, -105, -107}, 12}},
    {"Wir bleiben wach", "Juno & Kaiser", "Großes Kino", "Disco", "2022", {126, 58, {-109, 5, 0, 7}, 13}},
    {"Ein Lied für Hannah", "Mara Lind", "Regen auf Glas", "Pop", "2018", {88, 64, {0, -104, -109, 5}, 9}},
    {"Golden Hour", "Marlene Voss", "Süden", "Soul", "2020", {92, 56, {0, -102, 5, 7}, 9}},
    {"Letzter Tanz um fünf Uhr früh",
     "Anna Bergström",
     "Lichter der Autobahn",
     "Deutschpop",
     "2019",
     {100, 57, {-100, 8, 3, 7}, 10}},
}};

using SoundFile = std::unique_ptr<SNDFILE, int (*)(SNDFILE*)>;

/** The MP3 writer takes its texts in Latin-1, the OGG writer in UTF-8. */
void SetTags(SNDFILE* file, const DemoTitle& title, std::size_t index, bool isMp3) {
    const QByteArray track = QByteArray::number(static_cast<int>(index) + 1);
    const std::array<std::pair<int, const char*>, 6> tags{{{SF_STR_TITLE, title.title},
                                                           {SF_STR_ARTIST, title.artist},
                                                           {SF_STR_ALBUM, title.album},
                                                           {SF_STR_GENRE, title.genre},
                                                           {SF_STR_DATE, title.year},
                                                           {SF_STR_TRACKNUMBER, track.constData()}}};
    for (const auto& tag : tags) {
        const QString text = QString::fromUtf8(tag.second);
        sf_set_string(file, tag.first, isMp3 ? text.toLatin1().constData() : text.toUtf8().constData());
    }
}

bool WriteTitle(const QString& path, const DemoTitle& title, std::size_t index, bool isMp3) {
    SF_INFO info{};
    info.samplerate = kDemoSampleRate;
    info.channels = 2;
    info.format = isMp3 ? SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III : SF_FORMAT_OGG | SF_FORMAT_VORBIS;
    SoundFile file(sf_open(QFile::encodeName(path).constData(), SFM_WRITE, &info), &sf_close);
    if (!file)
        return false;
    SetTags(file.get(), title, index, isMp3);
    const std::vector<float> stereo = RenderDemoTune(title.tune);
    // In pieces: the OGG writer puts each call's frames on its stack.
    constexpr sf_count_t kPiece = 4096;
    const auto frames = static_cast<sf_count_t>(stereo.size() / 2);
    for (sf_count_t done = 0; done < frames; done += kPiece) {
        const sf_count_t count = std::min(kPiece, frames - done);
        if (sf_writef_float(file.get(), stereo.data() + 2 * done, count) != count)
            return false;
    }
    return sf_close(file.release()) == 0;
}

} // namespace

QStringList WriteDemoTitles(const QString& folder) {
    const QDir target(QDir(folder).absolutePath());
    target.mkpath(QStringLiteral("."));
    std::array<QString, kTitles.size()> written;
    std::atomic<std::size_t> next{0};
    const auto work = [&] {
        for (std::size_t i = next++; i < kTitles.size(); i = next++) {
            const DemoTitle& title = kTitles.at(i);
            const bool isMp3 = i % 2 == 0;
            const QString path =
                target.filePath(QStringLiteral("%1 - %2.%3")
                                    .arg(QString::fromUtf8(title.artist), QString::fromUtf8(title.title),
                                         isMp3 ? QStringLiteral("mp3") : QStringLiteral("ogg")));
            if (WriteTitle(path, title, i, isMp3))
                written.at(i) = path;
        }
    };
    std::vector<std::thread> helpers(std::max(1U, std::thread::hardware_concurrency()) - 1);
    for (std::thread& helper : helpers)
        helper = std::thread(work);
    work();
    for (std::thread& helper : helpers)
        helper.join();
    QStringList paths(written.begin(), written.end());
    paths.removeAll(QString());
    return paths;
}

} // namespace kalvo
