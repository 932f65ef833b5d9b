#include "playback/TitleMeasurer.h"

#include "FakeDesk.h"
#include "archive/Archive.h"
#include "playback/TempoRun.h"
#include "support/WaitUntil.h"

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

std::atomic<int> measured{0};

/** Names tell: "stumm" has no beat, "kaputt" cannot be decoded. */
std::optional<audio::TitleMeasures> FakeMeasure(const std::string& path, const std::atomic<bool>&) {
    ++measured;
    if (path.find("kaputt") != std::string::npos)
        return std::nullopt;
    return audio::TitleMeasures{-10, 0.9, path.find("stumm") != std::string::npos ? 0 : 127.6};
}

struct TitleMeasurerTest : ::testing::Test {
    TitleMeasurerTest() { measured = 0; }
    std::unique_ptr<TitleMeasurer> Make() {
        return std::make_unique<TitleMeasurer>(folder.Path(u"Messung.db"_s), clock, &FakeMeasure);
    }
    static void Measure(TitleMeasurer& measurer, const QString& path) {
        measurer.Request(path);
        ASSERT_TRUE(test::WaitUntil([&] { return !measurer.IsBusy(); }));
    }

    test::TestFolder folder;
    SystemClock clock;
};

TEST_F(TitleMeasurerTest, AFileIsMeasuredOnceUntilItChanges) {
    const QString path = folder.Write(u"a.mp3"_s, "x");
    auto measurer = Make();
    EXPECT_EQ(measurer->Known(path), std::nullopt);
    Measure(*measurer, path);
    Measure(*measurer, path);
    EXPECT_EQ(measured, 1);
    measurer = Make();
    ASSERT_TRUE(measurer->Known(path));
    EXPECT_EQ(*measurer->Known(path), (audio::TitleMeasures{-10, 0.9, 127.6}));
    Measure(*measurer, path);
    EXPECT_EQ(measured, 1) << "known from the file";
    folder.Write(u"a.mp3"_s, "longer");
    Measure(*measurer, path);
    EXPECT_EQ(measured, 2);
}

TEST_F(TitleMeasurerTest, ADamagedFileIsSetAside) {
    folder.Write(u"Messung.db"_s, "{\"format\":1,\"titel\":");
    const QString path = folder.Write(u"a.mp3"_s, "x");
    auto measurer = Make();
    EXPECT_FALSE(measurer->Known(path));
    Measure(*measurer, path);
    EXPECT_TRUE(measurer->Known(path));
    EXPECT_EQ(QDir(folder.Path({})).entryList({u"Messung.db.defekt-*"_s}).size(), 1);
}

TEST(LevellingGainTest, BringsTitlesToOneLoudnessWithinLimits) {
    EXPECT_NEAR(LevellingGain({-10, 1.1, 0}), -6, 1e-9);
    EXPECT_NEAR(LevellingGain({-1, 1.1, 0}), -12, 1e-9) << "no further down";
    EXPECT_NEAR(LevellingGain({-30, 0.1, 0}), 6, 1e-9) << "no further up";
    EXPECT_NEAR(LevellingGain({-20, 0.8, 0}), 20 * std::log10(0.966 / 0.8), 1e-6) << "not into the limiter";
    EXPECT_EQ(LevellingGain({-20, 1, 0}), 0);
    EXPECT_EQ(LevellingGain({-70, 0, 0}), 0);
}

TEST(MixerGainTest, EachTitleStartsWithItsOwnGain) {
    test::FakeDesk desk;
    desk.Fill(desk.list1, {u"a-60"_s, u"b-60"_s});
    QStringList asked;
    desk.mixer.SetTitleGain([&asked](const QString& path) {
        asked.append(path.section(u'/', -1));
        return -3.0;
    });
    desk.mixer.Play(1, 0);
    desk.mixer.Next(1);
    EXPECT_EQ(asked, (QStringList{u"a-60"_s, u"b-60"_s}));
    EXPECT_EQ(desk.fake.gains, (std::vector<float>{-3, -3}));
}

struct TempoRunTest : TitleMeasurerTest {
    TempoRunTest() {
        EXPECT_TRUE(archive.Open(DataFolder(folder.Path(u"Kalvo"_s))));
        EXPECT_TRUE(archive.WaitForIndex());
        for (const QString& name : {u"a"_s, u"b"_s, u"stumm"_s, u"kaputt"_s, u"c"_s}) {
            TitleRecord title;
            title.Titel = name;
            title.Pfad = folder.Write(name, "x");
            title.Extra4 = name == u"b"_s ? u"99"_s : QString();
            EXPECT_TRUE(archive.AddTitle(title));
            numbers.push_back(title.Nr);
        }
    }
    QStringList Tempos() const {
        QStringList tempos;
        for (const qint64 number : numbers)
            tempos.append(archive.Read({number}).value(0).Extra4);
        return tempos;
    }

    Archive archive{clock};
    std::vector<qint64> numbers;
    std::unique_ptr<TitleMeasurer> measurer = Make();
    TempoRun run{archive, *measurer};
};

TEST_F(TempoRunTest, EmptyFieldsAreFilledOthersStay) {
    run.Start(numbers);
    ASSERT_TRUE(test::WaitUntil([this] { return !run.IsRunning(); }));
    EXPECT_EQ(Tempos(), (QStringList{u"128"_s, u"99"_s, {}, {}, u"128"_s}));
    EXPECT_EQ(run.Found(), 2);
    EXPECT_EQ(run.Failed(), 2);
    EXPECT_EQ(run.Done(), 5U);
    EXPECT_EQ(measured, 4);
}

TEST_F(TempoRunTest, ACancelledRunWritesNothingMore) {
    QObject::connect(measurer.get(), &TitleMeasurer::Measured, &run, [this] { run.Cancel(); });
    run.Start(numbers);
    ASSERT_TRUE(test::WaitUntil([this] { return !run.IsRunning(); }));
    EXPECT_FALSE(measurer->IsBusy());
    const QStringList after = Tempos();
    EXPECT_EQ(std::count(after.begin(), after.end(), u"128"_s), 1);
}

} // namespace
} // namespace kalvo
