#include "app/SessionMemory.h"

#include "app/Desk.h"
#include "playback/FakeAudio.h"
#include "playlists/PlaylistQuestions.h"
#include "playlists/PlaylistSupport.h"
#include "support/TestFolder.h"
#include "support/WaitUntil.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

class GivenAnswer final : public PlaylistQuestions {
public:
    void Tell(const QString& text) override { asked.append(text); }
    QString Ask(const QString& /*caption*/, const QString& text) override {
        asked.append(text);
        meanwhile();
        return answer;
    }
    QString answer;
    QStringList asked;
    std::function<void()> meanwhile = [] {}; ///< what happens while the question is open
};

/** One run of the program on a data folder; its end without End() is a crash. */
struct Session {
    explicit Session(const QString& path, const QString& answer = u"Ja"_s) {
        questions.answer = answer;
        auto library = std::make_unique<test::FakeAudio>();
        fake = library.get();
        desk = std::make_unique<Desk>(DataFolder(path), std::move(library));
        desk->layer.InitAudio(1, 1024);
        desk->keeper.Restore();
        memory = std::make_unique<SessionMemory>(*desk, questions, desk->writer);
        QObject::connect(memory.get(), &SessionMemory::Damaged, [this](const QString& text) { damaged.append(text); });
        QObject::connect(memory.get(), &SessionMemory::Resumed, [this] { resumed = true; });
        memory->Begin();
    }

    /** Lets the journal take down what the desk looks like now. */
    void Journal() {
        const QString path = desk->folder.Path(u"\\sitzung.json"_s);
        EXPECT_TRUE(test::WaitUntil([&] {
            QFile file(path);
            const auto state = file.open(QIODevice::ReadOnly) ? SessionState::FromJson(file.readAll()) : std::nullopt;
            return state && state->ToJson() == SessionState::Of(*desk).ToJson();
        }));
    }

    GivenAnswer questions;
    test::FakeAudio* fake = nullptr;
    std::unique_ptr<Desk> desk;
    std::unique_ptr<SessionMemory> memory;
    QStringList damaged;
    bool resumed = false;
};

struct SessionMemoryTest : ::testing::Test {
    QString Data() const { return folder.Path(u"Kalvo"_s); }

    PlaylistEntry Entry(const char* name) {
        return {QLatin1String(name), u"Künstler"_s, {}, {}, {}, folder.Write(QLatin1String(name), "x")};
    }
    /** Player 1 at 42.5 s in its second title, Player 2 paused, the fader on the way to it. */
    void PlayAndCrash() {
        Session session(Data());
        Desk& desk = *session.desk;
        desk.list1.Append({Entry("a-100"), Entry("b-200"), Entry("c-100")});
        desk.list2.Append({Entry("d-300"), Entry("e-100")});
        desk.list1.MarkPlayNext(2);
        MixerOptions options = desk.mixer.Options();
        options.continuous = false;
        options.switchOver = 15;
        desk.mixer.SetOptions(options);
        desk.mixer.PlayRow(1, 1);
        desk.mixer.PlayRow(2, 0);
        session.fake->Advance(42.5);
        desk.mixer.Pause(2);
        desk.mixer.SetPitch(1, 25);
        desk.mixer.SetFader(-30);
        session.Journal();
    }

    test::TestFolder folder;
};

TEST_F(SessionMemoryTest, GoesOnAfterACrashExactlyWhereTheMusicStopped) {
    PlayAndCrash();
    Session next(Data());
    ASSERT_TRUE(test::WaitUntil([&next] { return next.resumed; }));
    ASSERT_EQ(next.questions.asked.size(), 1);
    for (const char* part : {"Player 1", "00:42", "Künstler - b-200"})
        EXPECT_TRUE(next.questions.asked[0].contains(QString::fromUtf8(part))) << next.questions.asked[0].toStdString();

    Mixer& mixer = next.desk->mixer;
    EXPECT_EQ(mixer.StatusText(1) + u' ' + mixer.Title(1).title, u"play b-200"_s);
    EXPECT_DOUBLE_EQ(mixer.PositionSeconds(1), 42.5);
    EXPECT_EQ(mixer.Pitch(1), 25);
    EXPECT_EQ(mixer.StatusText(2) + u' ' + mixer.Title(2).title, u"pause d-300"_s);
    EXPECT_EQ(mixer.Fader(), -30);
    EXPECT_FALSE(mixer.Options().continuous);
    EXPECT_EQ(mixer.Options().switchOver, 15);
    EXPECT_EQ(test::Shown(next.desk->list1), "a-100!.b-200>c-100");
    EXPECT_EQ(test::Shown(next.desk->list2), "!.d-300e-100");
}

TEST_F(SessionMemoryTest, ARefusalKeepsTheListsAndIsNotAskedAgain) {
    PlayAndCrash();
    {
        Session next(Data(), u"Nein"_s);
        ASSERT_TRUE(test::WaitUntil([&next] { return !next.questions.asked.isEmpty(); }));
        EXPECT_EQ(next.desk->mixer.OnAirPlayer(), 0);
        EXPECT_EQ(next.desk->list1.Count(), 3); // whether or not the file held them before the crash
        EXPECT_EQ(next.desk->list2.Count(), 2);
        next.Journal();
    }
    const Session third(Data());
    QCoreApplication::processEvents();
    EXPECT_TRUE(third.questions.asked.isEmpty());
}

TEST_F(SessionMemoryTest, KeepsTheJournalUntilTheQuestionIsAnswered) {
    PlayAndCrash();
    { const Session killedWhileAsking(Data()); }
    {
        Session ended(Data(), u"Nein"_s); // whose end comes while it asks
        ended.questions.meanwhile = [&ended] { ended.memory->End(); };
        ASSERT_TRUE(test::WaitUntil([&ended] { return !ended.questions.asked.isEmpty(); }));
    }
    Session next(Data());
    EXPECT_TRUE(test::WaitUntil([&next] { return next.resumed; }));
}

TEST_F(SessionMemoryTest, APausedTitleIsOfferedToo) {
    {
        Session session(Data());
        session.desk->list2.Append({Entry("a-100")});
        session.desk->mixer.PlayRow(2, 0);
        session.fake->Advance(61);
        session.desk->mixer.Pause(2);
        session.Journal();
    }
    Session next(Data());
    ASSERT_TRUE(test::WaitUntil([&next] { return next.resumed; }));
    EXPECT_TRUE(next.questions.asked[0].contains(u"Auf Player 2 war bei 01:01 angehalten:"_s));
    EXPECT_EQ(next.desk->mixer.Activity(2), audio::Activity::Paused);
}

TEST_F(SessionMemoryTest, TheJournalIsNeverOlderThanThePlaylistFile) {
    Session session(Data());
    session.desk->list1.Append({Entry("a-100"), Entry("b-100")});
    ASSERT_TRUE(session.desk->keeper.SaveNow());
    const auto state = SessionState::FromJson(folder.Read(u"Kalvo/sitzung.json"_s));
    ASSERT_TRUE(state && state->lists[0].unsaved);
    EXPECT_EQ(state->lists[0].unsaved->size(), 2);
}

TEST_F(SessionMemoryTest, ADamagedJournalIsSetAsideAndTold) {
    for (const QByteArray& bytes : {QByteArray("{\"format\":1,\"player\":[{\"ti"), QByteArray(300, '\0'),
                                    QByteArray("{\"format\":99}"), QByteArray()}) {
        test::TestFolder place;
        place.Write(u"sitzung.json"_s, bytes);
        Session session(place.Path());
        QCoreApplication::processEvents();
        EXPECT_EQ(session.damaged.size(), 1) << bytes.toStdString();
        EXPECT_TRUE(session.questions.asked.isEmpty());
        EXPECT_EQ(QDir(place.Path()).entryList({u"sitzung.json.defekt-*"_s}).size(), 1);
    }
}

} // namespace
} // namespace kalvo
