#include "gallery/GalleryContent.h"

#include "app/WindowValues.h"
#include "base/PlayTime.h"
#include "gallery/StageAudio.h"
#include "live/InspectedTitle.h"
#include "live/JingleFile.h"
#include "live/SampleFile.h"
#include "playback/OutputChoice.h"
#include "playback/TitleStore.h"
#include "playback/WaveformCache.h"
#include "playlists/PlaylistActions.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPainter>

namespace kalvo::gallery::GalleryContent {

namespace {

using namespace Qt::StringLiterals;

struct Title {
    const char* title;
    const char* artist;
    const char* album;
    const char* rating;
    const char* genre;
    const char* length;
    const char* year;
    const char* comment;
    const char* bpm;
};

/** Of the demonstration's titles in their order, which exist as files. */
const std::vector<Title> kFiles{
    {"Sommer in der Stadt", "Nordlicht Kapelle", "Fahrplan", "sehr gut", "Pop", "04:55", "2012", "", "118"},
    {"Blaue Stunde", "Mara Lind", "Regen auf Glas", "gut", "Pop", "04:02", "2018", "ruhig", "96"},
    {"Tanz mit mir durch die Nacht", "Juno & Kaiser", "Großes Kino", "sehr gut", "Disco", "03:19", "2022", "", "124"},
    {"Über den Dächern", "Die Dachterrassen", "Über der Stadt", "gut", "Schlager", "03:26", "2015", "Hochzeit", "112"},
    {"Nachtzug nach Norden", "Nordlicht Kapelle", "Fahrplan", "gut", "Rock", "05:07", "2012", "", "132"},
    {"Schöner Schein", "Anna Bergström", "Lichter der Autobahn", "", "Deutschpop", "03:09", "2019", "", "104"},
    {"Mach's gut, Müller", "Die Dachterrassen", "Über der Stadt", "mittel", "Schlager", "03:15", "2015", "", "128"},
    {"Radio Silence", "Low Tide Society", "Signals", "gut", "House", "05:04", "2021", "lang", "122"},
    {"Wir bleiben wach", "Juno & Kaiser", "Großes Kino", "sehr gut", "Disco", "03:50", "2022", "", "126"},
    {"Ein Lied für Hannah", "Mara Lind", "Regen auf Glas", "gut", "Pop", "04:12", "2018", "langsam", "88"},
    {"Golden Hour", "Marlene Voss", "Süden", "sehr gut", "Soul", "03:58", "2020", "", "92"},
    {"Letzter Tanz um fünf Uhr früh", "Anna Bergström", "Lichter der Autobahn", "gut", "Deutschpop", "05:38", "2019",
     "Kehraus", "100"},
};

const std::vector<Title> kOthers{
    {"Nachtfahrt", "Anna Bergström", "Lichter der Autobahn", "gut", "Deutschpop", "03:44", "2019", "", "110"},
    {"Blaue Nacht am Hafen", "Die Dachterrassen", "Über der Stadt", "sehr gut", "Schlager", "03:26", "2015", "", "114"},
    {"Night Bus (Nachtbus Mix)", "Low Tide Society", "Signals", "gut", "House", "06:02", "2021", "lang", "124"},
    {"Sternennacht", "Mara Lind", "Regen auf Glas", "", "Pop", "04:31", "2018", "", "84"},
    {"Hotel Mitternacht", "Theo Sand", "Zimmer 12", "mittel", "Deutschpop", "03:55", "2016", "ruhig", "98"},
    {"Wach", "Zwischen Nacht und Tag", "Erste Bahn", "gut", "Electronic", "04:18", "2023", "", "121"},
    {"Halbmond", "Zwischen Nacht und Tag", "Erste Bahn", "", "Electronic", "05:26", "2023", "", "119"},
    {"Erste Bahn", "Zwischen Nacht und Tag", "Erste Bahn", "gut", "Electronic", "03:40", "2023", "", "123"},
    {"Hafenkonzert", "Die Dachterrassen", "Über der Stadt", "gut", "Schlager", "03:41", "2015", "", "108"},
    {"Paper Boats", "The Harbour Lights", "Ferry Songs", "sehr gut", "Rock", "03:32", "2017", "", "136"},
    {"Midnight Ferry", "The Harbour Lights", "Ferry Songs", "sehr gut", "Rock", "05:38", "2017", "", "128"},
    {"Second Summer", "Ivory Coastline", "Second Summer", "gut", "House", "03:36", "2020", "", "122"},
    {"Satellites", "Low Tide Society", "Signals", "gut", "House", "04:27", "2021", "", "120"},
    {"Kilometer null", "Anna Bergström", "Lichter der Autobahn", "", "Deutschpop", "03:21", "2019", "", "116"},
    {"Kopf hoch, Tanzen", "Die Dachterrassen", "Über der Stadt", "gut", "Schlager", "03:15", "2015", "", "126"},
    {"Regen auf Glas", "Mara Lind", "Regen auf Glas", "", "Pop", "03:47", "2018", "", "90"},
    {"Zimmer 12", "Theo Sand", "Zimmer 12", "", "Deutschpop", "04:05", "2016", "", "102"},
    {"Weit draußen", "Theo Sand", "Zimmer 12", "gut", "Deutschpop", "03:33", "2016", "", "95"},
    {"Southbound", "Marlene Voss", "Süden", "gut", "Soul", "04:44", "2020", "", "86"},
    {"Kleiner Kompass", "Nordlicht Kapelle", "Fahrplan", "", "Rock", "03:12", "2012", "", "130"},
    {"Lighthouse Disco", "The Harbour Lights", "Ferry Songs", "sehr gut", "Disco", "04:09", "2017", "", "120"},
    {"Warm Sand", "Ivory Coastline", "Second Summer", "", "House", "05:50", "2020", "", "118"},
    {"Chanson du quai", "Elise Morel", "Quai Nord", "gut", "Chanson", "02:58", "2014", "ruhig", "78"},
    {"La dernière danse", "Elise Morel", "Quai Nord", "sehr gut", "Chanson", "03:24", "2014", "Walzer", "180"},
};

QString Text(const char* text) {
    return QString::fromUtf8(text);
}

TitleRecord RecordOf(const Title& title, const QString& path) {
    TitleRecord record;
    record.Titel = Text(title.title);
    record.Interpret = Text(title.artist);
    record.Album = Text(title.album);
    record.Bewertung = Text(title.rating);
    record.Stil = Text(title.genre);
    record.Zeit = Text(title.length);
    record.Jahr = Text(title.year);
    record.Extra1 = Text(title.comment);
    record.Extra4 = Text(title.bpm);
    record.Pfad = path;
    return record;
}

/** One of the titles whose files are empty, beside those that can be read. */
TitleRecord Other(const QStringList& music, std::size_t index) {
    const Title& title = kOthers.at(index);
    const QString name = Text(title.artist) + u" - "_s + Text(title.title) + u".mp3"_s;
    return RecordOf(title, QFileInfo(music.constFirst()).path() + u'/' + name);
}

void Touch(const QString& path) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    static_cast<void>(file.open(QIODevice::WriteOnly));
}

double Seconds(const Title& title) {
    return PlayTime::Parse(Text(title.length));
}

/** Verses, a break and an end that fades, as loud as songs are. */
Waveform WaveOf(std::size_t index) {
    Waveform wave;
    auto noise = static_cast<std::uint32_t>(index);
    for (int column = 0; column < Waveform::kColumns; ++column) {
        const double place = static_cast<double>(column) / Waveform::kColumns;
        const double verse = 0.66 + 0.26 * std::sin(place * (17 + static_cast<double>(index % 5)) + 0.4);
        noise = noise * 1664525U + 1013904223U;
        const double beat = 0.45 + 0.55 * static_cast<double>(noise >> 8U) / (1U << 24U);
        const double edge = std::min({1.0, place * 24, (1 - place) * 14});
        const double peak = 250 * std::clamp(verse * beat * edge, 0.02, 1.0);
        wave.columns.at(static_cast<std::size_t>(column)) = {static_cast<std::uint8_t>(peak),
                                                             static_cast<std::uint8_t>(peak * 0.55)};
    }
    wave.known = Waveform::kColumns;
    return wave;
}

/** A sun over water, or mountains by night. */
void PaintCover(const QString& folder) {
    QImage image(240, 240, QImage::Format_RGB32);
    image.fill(QColor(0x22, 0x36, 0x5c));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xea, 0xc3, 0x6b));
    painter.drawEllipse(QPointF(150, 98), 48, 48);
    painter.setBrush(QColor(0xe5, 0x73, 0x54));
    for (const int line : {168, 190, 212})
        painter.drawRect(0, line, 240, 9);
    image.save(folder + u"/cover.png"_s);
}

/** Beside the music; the files in it are empty. */
QString SampleOf(const QStringList& music, const QString& name) {
    const QString folder = QFileInfo(QFileInfo(music.constFirst()).path()).path();
    QString path = folder + u"/Kalvo/Sample/"_s + name + u".mp3"_s;
    Touch(path);
    return path;
}

void WriteSamples(Desk& desk, const QStringList& music) {
    const char* names[] = {
        "Tusch",        "Countdown 5 s",   "",           "Trommelwirbel", "Gleich geht's weiter", "Glocke", "Applaus",
        "Airhorn kurz", "Stationskennung", "Verkehrston"};
    SampleSlots slots;
    for (std::size_t pad = 0; pad < slots.size(); ++pad) {
        if (const QString name = Text(names[pad]); !name.isEmpty())
            slots.at(pad) = {name, SampleOf(music, name)};
    }
    SampleFile(desk.folder.Path(u"\\sample.dll"_s), desk.clock).Write(slots);
}

void WriteJingles(Desk& desk, const QStringList& music) {
    JingleFile file(desk.folder.Path(u"\\TerminPlayNeu.dll"_s), desk.settings, desk.clock);
    JingleRecords records = file.Read();
    const auto fill = [&records, &music](std::size_t place, const QString& name, const QList<JingleSlot>& slots) {
        records.at(place).path = SampleOf(music, name);
        records.at(place).active = true;
        for (qsizetype slot = 0; slot < slots.size(); ++slot)
            records.at(place).slots.at(static_cast<std::size_t>(slot)) = slots.at(slot);
    };
    // Hours away: nothing is to be due while somebody looks.
    const QTime later(desk.clock.Now().time().addSecs(6 * 3600).hour(), 0);
    const auto at = [&later](int minutes) { return later.addSecs(60 * minutes).toString(u"HH:mm"_s); };
    fill(0, u"Stationskennung"_s, {{JingleSlot::Daily(), {}, at(0)}, {JingleSlot::Daily(), {}, at(30)}});
    fill(1, u"Verkehrston"_s, {{JingleSlot::Daily(), {}, at(15)}});
    fill(2, u"Gleich wird getanzt"_s, {{JingleSlot::Weekly(), u"Samstag"_s, at(55)}});
    records[2].active = false;
    records[1].afterTitle = true;
    file.Write(records);
}

void WriteEvening(Desk& desk, const QStringList& music) {
    QDateTime start(EveningLog::EveningOf(desk.clock.Now()), QTime(20, 4, 11));
    for (std::size_t row = 0; row < 14; ++row) {
        const Title& title = row % 2 == 0 ? kFiles.at(row / 2) : kOthers.at(row);
        PlayedTitle played;
        played.start = start;
        played.player = row % 2 == 0 ? 1 : 2;
        played.origin = row == 5 ? PlayOrigin::Wish : row > 8 ? PlayOrigin::Automatic : PlayOrigin::Player;
        played.artist = Text(title.artist);
        played.title = Text(title.title);
        played.length = static_cast<int>(Seconds(title));
        played.played = played.length - 9;
        played.path = music.constFirst();
        desk.evening.Write(played);
        start = start.addSecs(played.played);
    }
}

/** What the check before the show knows of the files, which are empty or shorter than their titles. */
class Inspections {
public:
    explicit Inspections(Desk& desk)
        : known_(desk.folder.Path(u"\\Vorpruefung.db"_s), TitleRows::Access::Write, desk.clock) {}

    void Keep(const TitleRecord& title) {
        audio::TitleInspection found;
        found.decoded = PlayTime::Parse(title.Zeit);
        found.silenceAtEnd = title.Titel == u"Regen auf Glas"_s || title.Titel == u"Southbound"_s ? 9 : 0.4;
        found.clippedRuns = title.Titel == u"Lighthouse Disco"_s ? 46 : 0;
        found.measures = {title.Titel == u"Über den Dächern"_s ? -23.5 : -11.0, 0.98, title.Extra4.toDouble()};
        known_.Put(title.Pfad, {FileStamp::Of(title.Pfad), found});
    }

private:
    TitleStore<InspectedTitle> known_;
};

void WriteCharts(Desk& desk, const QStringList& music) {
    QDateTime when = desk.clock.Now().addDays(-20);
    for (std::size_t row = 0; row < 18; ++row) {
        const TitleRecord title = Other(music, row);
        const std::size_t plays = 1 + (row * 7) % 11;
        for (std::size_t play = 0; play < plays; ++play) {
            when = when.addSecs(11027);
            desk.charts.Count(play % 5 == 0   ? PlaySource::Archive
                              : play % 2 == 0 ? PlaySource::Player1
                                              : PlaySource::Player2,
                              title.Pfad, title.Titel, title.Interpret, when);
        }
    }
}

} // namespace

void WriteFiles(Desk& desk, const QStringList& music) {
    desk.settings.PutNumber(u"Equalizer"_s, u"Lautstärke"_s, 80);
    OutputChoice{2, desk.layer.DeviceNames().value(2)}.Write(desk.settings);
    OutputChoice{3, desk.layer.DeviceNames().value(3)}.Write(desk.settings, audio::Output::Headphones);
    WindowValues values;
    values.importFolder = QFileInfo(music.constFirst()).path();
    values.Write(desk.folder.Path(u"\\kalvo.dll"_s));
    WriteSamples(desk, music);
    WriteJingles(desk, music);
    WriteEvening(desk, music);
    WriteCharts(desk, music);
}

void FillArchive(Desk& desk, const QStringList& music) {
    const QDateTime now = desk.clock.Now();
    Inspections inspections(desk);
    for (std::size_t index = 0; index < kFiles.size(); ++index) {
        TitleRecord record = RecordOf(kFiles.at(index), music.at(static_cast<qsizetype>(index)));
        record.Extra2 = now.addDays(-3 * static_cast<qint64>(index)).toString(u"yyyy.MM.dd, HH:mm"_s);
        desk.archive.AddTitle(record);
        inspections.Keep(record);
    }
    for (std::size_t index = 0; index < kOthers.size(); ++index) {
        TitleRecord record = Other(music, index);
        Touch(record.Pfad);
        record.Extra2 = index % 3 == 0 ? QString() : now.addDays(-40).toString(u"yyyy.MM.dd, HH:mm"_s);
        desk.archive.AddTitle(record);
        inspections.Keep(record);
    }
    for (const std::size_t index : {2U, 9U}) {
        TitleRecord twice = Other(music, index);
        const QFileInfo file(twice.Pfad);
        twice.Pfad = file.path() + u"/Neuzugänge/"_s + file.fileName();
        Touch(twice.Pfad);
        desk.archive.AddTitle(twice);
    }
    desk.archive.Refresh();
    const auto wish = [&desk](const TitleRecord& title, const QString& guest) {
        desk.wishes.Add({title.Pfad, WishDisplay(title.Interpret, title.Titel), guest, {}});
    };
    wish(Other(music, 12), u"Tisch 4"_s);
    wish(Other(music, 3), u"Jonas"_s);
    wish(RecordOf(kFiles.at(10), music.at(10)), u"Frau Ortmann"_s);
}

void PutOnAir(Desk& desk, StageAudio& audio, const QStringList& music) {
    const WaveformCache waves(desk.folder.Path(u"\\Wellenformen"_s));
    PaintCover(QFileInfo(music.constFirst()).path());
    for (std::size_t index = 0; index < kFiles.size(); ++index) {
        const QString path = music.at(static_cast<qsizetype>(index));
        audio.lengths[QFile::encodeName(path).toStdString()] = Seconds(kFiles.at(index));
        waves.Keep(path, WaveOf(index));
    }
    const auto entry = [&](int file, EntryIcon icon = EntryIcon::None) {
        PlaylistEntry made = EntryOf(RecordOf(kFiles.at(static_cast<std::size_t>(file)), music.at(file)));
        made.icon = icon;
        return made;
    };
    const auto other = [&music](std::size_t index, EntryIcon icon = EntryIcon::None) {
        PlaylistEntry made = EntryOf(Other(music, index));
        made.icon = icon;
        return made;
    };
    desk.list1.Append({other(8, EntryIcon::Played), entry(10, EntryIcon::Played), entry(0), entry(3), entry(2),
                       entry(7), other(13), other(20), other(18), entry(9), other(16)});
    desk.list2.Append({entry(1, EntryIcon::Played), other(11, EntryIcon::Played), other(14, EntryIcon::Played),
                       entry(11), entry(8), entry(5), other(12), other(23), other(4)});
    desk.list1.SetInfo(3, u"8.4"_s);
    desk.list2.SetInfo(3, u"12.4"_s);
    desk.list1.MarkPlayNext(4);
    desk.list2.SetCurrent(2); // its next title is opened ahead
    desk.mixer.SetPitch(2, 15);
    desk.mixer.SetFader(-100);
    desk.mixer.PlayRow(1, 2);
    desk.mixer.SeekSeconds(1, Seconds(kFiles.front()) - 11);
}

} // namespace kalvo::gallery::GalleryContent
