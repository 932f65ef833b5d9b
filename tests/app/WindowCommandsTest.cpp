#include "app/FakeWindow.h"
#include "app/MetaOutput.h"
#include "app/StatusLine.h"
#include "live/SampleFile.h"
#include "support/SoundMaker.h"

#include <array>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

struct MetaOutputTest : test::FakeWindow {
    void SetUp() override {
        folder.Write(u"Kalvo/kalvo.ini"_s, "[Metadata]\nStop=Pause im Programm\nAlternativ=Kalvo spielt\n");
        ASSERT_TRUE(window->Load());
    }
    void Add(int player, const QString& artist, const QString& title) {
        desk->List(player).Append({{title, artist, {}, {}, {}, folder.Write(u"a-100"_s, "x")}});
    }
    QString Line() {
        desk->writer.Flush();
        return QString::fromUtf8(Read("meta.dat"));
    }
};

TEST_F(MetaOutputTest, FollowsTheTitleOnAir) {
    Add(1, u"Jürgen\nund Co"_s, u"Größe"_s);
    Add(2, {}, u"Nur Titel"_s);
    EXPECT_EQ(Line(), u"Pause im Programm\n"_s);
    desk->mixer.Play(1, -1);
    EXPECT_EQ(Line(), u"Jürgen und Co - Größe\n"_s);
    desk->mixer.Play(2, -1); // in the middle of the fader Player 1 counts
    EXPECT_EQ(Line(), u"Jürgen und Co - Größe\n"_s);
    desk->mixer.SetFader(50);
    EXPECT_EQ(Line(), u"Nur Titel\n"_s);
    desk->mixer.Stop(2);
    desk->mixer.Pause(1);
    EXPECT_EQ(Line(), u"Pause im Programm\n"_s);
    desk->mixer.Stop(1);
    desk->list1.Clear();
    Add(1, {}, u"  "_s);
    desk->mixer.Play(1, -1);
    EXPECT_EQ(Line(), u"Kalvo spielt\n"_s) << "for a title without names";
}

/** The main window with two titles that are no music, and a sample whose file is missing. */
struct PreshowCommandsTest : test::FakeWindow {
    void SetUp() override {
        SampleSlots slots;
        slots[3] = {u"Tusch"_s, u"/fehlt/tusch.wav"_s};
        SampleFile(desk->folder.Path(u"\\sample.dll"_s), desk->clock).Write(slots);
        Show();
        Append(2, {"a-60", "b-60"});
        Trigger("Vorpruefung");
        ASSERT_TRUE(test::WaitUntil([this] { return In("cmdPruefen").isEnabled(); }));
    }
    void Follow(const QString& where) {
        auto& lines = In<QTreeWidget>("Befunde");
        const auto found = lines.findItems(where, Qt::MatchExactly | Qt::MatchRecursive, 0);
        ASSERT_FALSE(found.isEmpty()) << where.toStdString();
        Q_EMIT lines.itemActivated(found.constFirst(), 0);
    }
};

TEST_F(PreshowCommandsTest, ItsLinesLeadToWhatTheyName) {
    Follow(u"Liste 2, 2. b-60"_s);
    EXPECT_EQ(In<QTableView>("List2").currentIndex().row(), 1);
    Follow(u"Notfalltitel"_s);
    EXPECT_EQ(In<QListWidget>("lstSeiten").currentItem()->text(), u"Notfalltitel"_s);
    Follow(u"Kopfhörer"_s);
    EXPECT_EQ(In<QListWidget>("lstSeiten").currentItem()->text(), u"Soundkarten"_s);
    Follow(u"Sampler, Taste 4"_s);
    EXPECT_NE(window->findChild<QWidget*>(u"frmSampleEinstellungen"_s), nullptr);
}

TEST_F(PreshowCommandsTest, AListThatChangesIsLookedAtAgain) {
    auto& lines = In<QTreeWidget>("Befunde");
    const auto errors = [&lines] { return lines.topLevelItem(0)->childCount(); };
    const int before = errors();
    const int enumerations = fake->enumerations;
    desk->list2.Remove({1});
    EXPECT_TRUE(test::WaitUntil([&] { return errors() == before - 1; }));
    desk->list1.Append({{u"c"_s, {}, {}, {}, {}, folder.Path(u"fehlt.mp3"_s)}});
    EXPECT_TRUE(test::WaitUntil([&] { return errors() == before; }));
    EXPECT_EQ(fake->enumerations, enumerations) << "the sound system is left alone";
    ASSERT_TRUE(test::WaitUntil([this] { return In("cmdPruefen").isEnabled(); }));
    In<QPushButton>("cmdPruefen").click();
    EXPECT_EQ(fake->enumerations, enumerations + 1) << "until it is asked for";
}

using DeckPicturesTest = test::FakeWindow;

TEST_F(DeckPicturesTest, TheCoversPlaceCanBeTakenAway) {
    Show();
    window->resize(1280, 800);
    auto& cover = In("imgCover1");
    EXPECT_TRUE(test::WaitUntil([&cover] { return cover.isVisible(); }));
    Trigger("CoverAnzeigen");
    EXPECT_TRUE(test::WaitUntil([&cover] { return !cover.isVisible(); }));
    EXPECT_TRUE(Read("kalvo.ini").contains("Cover=0"));
}

TEST(StatusLine, KeepsWarningsBehindWhatIsTold) {
    StatusLine line;
    line.Warn(u"Datei war beschädigt"_s);
    line.Tell(u"1 Titel gefunden"_s);
    line.Tell(u"0 Titel gefunden"_s); // only the last one stays
    line.Warn(u"Archiv ist schreibgeschützt"_s);
    line.Warn(u"Datei war beschädigt"_s); // the same is told once
    line.Warn(QString());
    EXPECT_EQ(line.findChild<QLabel*>(u"lblMeldung"_s)->text().mid(u"HH:mm  "_s.size()),
              u"0 Titel gefunden  ·  Datei war beschädigt  ·  Archiv ist schreibgeschützt"_s);
}

/** The main window with a title of 40 s in each list; the desk's own library makes no sound, the rehearsal's does. */
struct RehearsalCommandsTest : test::FakeWindow {
    void SetUp() override {
        Show();
        const test::SoundSpec spec{40, 440, 8000, 1};
        for (const int list : {1, 2}) {
            const QString path = test::MakeSound(folder.Path(), u"t-%1.wav"_s.arg(list * 40), spec);
            desk->List(list).Append({{u"Titel %1"_s.arg(list), u"Wer"_s, {}, {}, {}, path}});
        }
    }
    void Open() {
        Trigger("Probelauf");
        ASSERT_TRUE(test::WaitUntil([this] { return In<QLabel>("lblStand").text() == u"1 Übergang"_s; }));
    }
};

TEST_F(RehearsalCommandsTest, TheDeskIsLeftAsItIs) {
    const std::array<PlaylistState, 2> before{desk->list1.State(), desk->list2.State()};
    int moved = 0;
    QObject::connect(&desk->mixer, &Mixer::TitleStarted, window.get(), [&moved] { ++moved; });
    QObject::connect(&desk->mixer, &Mixer::FaderMoved, window.get(), [&moved] { ++moved; });
    const std::size_t streams = fake->streams.size();
    Open();
    const QAbstractItemModel& table = *In<QTableView>("Uebergaenge").model();
    for (const auto& [column, text] :
         {std::pair(1, u"Wer - Titel 1"_s), {2, u"Wer - Titel 2"_s}, {4, u"gleichmäßig"_s}})
        EXPECT_EQ(table.index(0, column).data().toString(), text);
    EXPECT_EQ(desk->list1.State(), before[0]);
    EXPECT_EQ(desk->list2.State(), before[1]);
    EXPECT_EQ(desk->mixer.OnAirPlayer(), 0);
    EXPECT_LE(fake->streams.size(), streams + 2) << "what the desk opens ahead by itself";
    EXPECT_EQ(desk->charts.Size(), 0);
    EXPECT_EQ(moved, 0);
}

TEST_F(RehearsalCommandsTest, WithoutASecondCardItAsksBeforeItUsesTheMainOutput) {
    Open();
    auto& listen = In<QPushButton>("cmdAnhoeren");
    test::Answers answers({u"Nein"_s, u"OK"_s});
    listen.click();
    ASSERT_TRUE(test::WaitUntil([&] { return answers.Said().size() == 1; }));
    EXPECT_TRUE(answers.Said()[0].contains(u"Sollen die Übergänge auf der Hauptausgabe zu hören sein?"_s));
    ASSERT_TRUE(test::WaitUntil([&] { return listen.text().remove(u'&') == u"Anhören"_s; }));
    desk->mixer.Play(1, -1);
    listen.click();
    ASSERT_TRUE(test::WaitUntil([&] { return answers.Said().size() == 2; }));
    EXPECT_TRUE(answers.Said()[1].contains(u"Solange Musik auf Sendung ist"_s));
    EXPECT_TRUE(test::WaitUntil([&] { return listen.text().remove(u'&') == u"Anhören"_s; }));
}

using TagCommandsTest = test::FakeWindow;

TEST_F(TagCommandsTest, ArchiveAndListsFollowASavedFileAndNoFailedOne) {
    test::SoundSpec sound;
    sound.title = u"Alt"_s;
    sound.artist = u"Wer"_s;
    const QString path = test::MakeSound(folder.Path(), u"a-60.mp3"_s, sound);
    Show();
    AddTitle(Title(u"Wer"_s, u"Alt"_s, path));
    desk->list2.Append(
        {{u"anderes"_s, {}, {}, {}, {}, folder.Path(u"b-60.mp3"_s)}, {u"Alt"_s, u"Wer"_s, {}, {}, {}, path}});
    desk->mixer.PlayRow(2, 1);
    Trigger("TagEditor");
    auto& line = In<QLineEdit>("txtTitelV2");
    auto& save = In<QPushButton>("cmdSpeichern");
    ASSERT_TRUE(test::WaitUntil([&line] { return line.text() == u"Alt"; }));
    const auto saveAs = [&](const QString& title) {
        line.setText(title);
        Q_EMIT line.textEdited(title);
        save.click();
    };
    saveAs(u"Größer"_s);
    const auto archived = [&] { return desk->archive.FindByPath(path).value_or(TitleRecord()).Titel; };
    EXPECT_TRUE(test::WaitUntil([&] { return archived() == u"Größer"; })) << archived().toStdString();
    EXPECT_TRUE(test::WaitUntil([&] { return desk->list2.At(1).title == u"Größer"; }));
    EXPECT_EQ(desk->list2.At(0).title, u"anderes"_s);
    EXPECT_EQ(desk->mixer.Title(2).title, u"Größer"_s) << "and so does the player";

    ASSERT_TRUE(test::WaitUntil([&save] { return !save.isEnabled(); }));
    ASSERT_TRUE(QFile::remove(path));
    test::Answers answers({u"OK"_s});
    saveAs(u"Verloren"_s);
    ASSERT_TRUE(test::WaitUntil([&answers] { return answers.AllGiven(); }));
    EXPECT_TRUE(answers.Said().constFirst().contains(u"|a-60.mp3:\n"_s)) << answers.Said().join(u'\n').toStdString();
    EXPECT_EQ(archived(), u"Größer"_s);
    EXPECT_EQ(desk->list2.At(1).title, u"Größer"_s);
    EXPECT_FALSE(QFile::exists(path));
}

} // namespace
} // namespace kalvo
