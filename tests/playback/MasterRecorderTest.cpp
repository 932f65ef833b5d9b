// What is recorded is rendered offline and read back.

#include "playback/MasterRecorder.h"

#include "audio/AudioLibraryImpl.h"
#include "audio/EncoderLibraryImpl.h"
#include "audio/OpenDecoder.h"
#include "audio/ReadAheadFile.h"
#include "base/RandomSource.h"
#include "playback/OfflineMix.h"
#include "support/SoundMaker.h"
#include "support/TestFolder.h"
#include "support/WaitUntil.h"

#include <QDir>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

constexpr int kRate = 44100;
const std::pair<const char*, const char*> kFormats[] = {{"wav", ".wav"}, {"ogg", ".ogg"}, {"mp3-192", ".mp3"}};

/** Left side of a sound file. */
std::vector<float> LeftOf(const QString& path) {
    audio::ReadAheadFile file(audio::MakeFileSource(QFile::encodeName(path).toStdString()));
    const auto decoder = file.WaitUntilOpen() ? audio::OpenDecoder(file) : nullptr;
    std::vector<float> left, piece(2 * 4096);
    std::size_t got = 0;
    while (decoder && decoder->Read(piece.data(), 4096, got) == audio::ReadResult::Data) {
        for (std::size_t i = 0; i < got; ++i)
            left.push_back(piece[2 * i]);
    }
    return left;
}

/** How often the sound rises through zero in this second. */
int Crossings(const std::vector<float>& left, double second) {
    int crossings = 0;
    const auto first = std::size_t(second * kRate);
    for (std::size_t i = first + 1; i < std::min(first + kRate, left.size()); ++i)
        crossings += left[i - 1] < 0 && left[i] >= 0 ? 1 : 0;
    return crossings;
}

/** A desk whose time is driven by hand, and a recorder on it. */
struct MasterRecorderTest : ::testing::Test {
    MasterRecorderTest() {
        EXPECT_TRUE(layer.InitAudio(audio::kOffline, 1024));
        recorder.SetFreeSpace([this](const QString&) { return free.load(); });
        QObject::connect(&recorder, &MasterRecorder::Failed, [this](const QString& text) { failures << text; });
        MixerOptions byHand;
        byHand.continuous = byHand.automatic = false;
        mixer.SetOptions(byHand);
        mixer.SetFader(-100);
    }

    PlaylistEntry Title(const QString& name, double seconds, double frequency) const {
        test::SoundSpec spec;
        spec.seconds = seconds;
        spec.frequency = frequency;
        return {name, u"Interpret "_s + name, {}, {}, {}, test::MakeSound(folder.Path(), name + u".wav"_s, spec)};
    }
    bool Start(const QString& format, const QString& name = u"a"_s) {
        recorder.Start({folder.Path(u"ziel"_s), name, format});
        return test::WaitUntil([this] { return recorder.State().status != RecordingStatus::Starting; }) &&
               recorder.State().status == RecordingStatus::Running;
    }
    /** Sound of so many seconds, with what the desk's timers would do meanwhile. */
    void Run(double seconds) {
        double left = seconds;
        OfflineMix mix(mixer);
        mix.Run([&](const float*, std::size_t frames) {
            left -= double(frames) / kRate;
            return left > 0;
        });
    }
    /** Waits until the encoder has taken so much. */
    bool Written(double seconds) {
        return test::WaitUntil([&] {
            recorder.Tick();
            return recorder.State().seconds > seconds - 0.001;
        });
    }
    void Stop() {
        recorder.Stop();
        EXPECT_TRUE(recorder.IsIdle());
    }
    QString In(const QString& name) const { return folder.Path(u"ziel/"_s + name); }
    QByteArray Cue(const QString& name = u"a.cue"_s) const { return folder.Read(u"ziel/"_s + name); }

    test::TestFolder folder;
    SystemRandom random;
    Playlist list1{1, random}, list2{2, random};
    AudioLayer layer{std::make_unique<audio::AudioLibraryImpl>()};
    Mixer mixer{layer, list1, list2};
    std::atomic<qint64> free{qint64(1) << 40};
    QStringList failures;
    MasterRecorder recorder{mixer, [] { return std::make_unique<audio::EncoderLibraryImpl>(); }};
};

TEST_F(MasterRecorderTest, EveryFormatHoldsTheMixAndItsTitles) {
    list1.Append({Title(u"eins"_s, 4, 441)});
    list2.Append({Title(u"zwei"_s, 4, 882)});
    for (const auto& [format, ending] : kFormats) {
        SCOPED_TRACE(format);
        const QString name = QLatin1String(format);
        mixer.PlayRow(1, 0);
        ASSERT_TRUE(Start(name, name));
        Run(2);
        ASSERT_TRUE(Written(2));
        EXPECT_TRUE(test::WaitUntil([&] { return Cue(name + u".cue"_s).endsWith("INDEX 01 00:00:00\r\n"); }))
            << "there already, should the program be killed now";
        mixer.Stop(1);
        mixer.SetFader(100);
        mixer.PlayRow(2, 0);
        Run(2);
        Stop();
        mixer.Stop(2);
        mixer.SetFader(-100);
        const std::vector<float> left = LeftOf(In(name + QLatin1String(ending)));
        EXPECT_NEAR(double(left.size()) / kRate, 4, 0.1);
        EXPECT_NEAR(Crossings(left, 0.5), 441, 3);
        EXPECT_NEAR(Crossings(left, 2.5), 882, 4);
        ASSERT_TRUE(test::WaitUntil([&] { return Cue(name + u".cue"_s).contains("TRACK 02"); }));
        const QByteArray cue = Cue(name + u".cue"_s);
        SCOPED_TRACE(cue.data());
        EXPECT_TRUE(cue.contains("TITLE \"eins\"\r\n    PERFORMER \"Interpret eins\"\r\n    INDEX 01 00:00:00"));
        EXPECT_TRUE(cue.contains("TITLE \"zwei\"\r\n    PERFORMER \"Interpret zwei\"\r\n    INDEX 01 00:02:00"));
        EXPECT_FALSE(cue.contains("TRACK 03"));
    }
    EXPECT_EQ(failures, QStringList());
}

TEST_F(MasterRecorderTest, NothingIsOverwritten) {
    folder.Write(u"ziel/a.wav"_s, "sound");
    folder.Write(u"ziel/a-2.cue"_s, "titles");
    list1.Append({Title(u"eins"_s, 4, 441)});
    mixer.PlayRow(1, 0);
    ASSERT_TRUE(Start(u"wav"_s));
    EXPECT_EQ(recorder.State().path, In(u"a-3.wav"_s));
    recorder.Start({folder.Path(), u"b"_s, u"wav"_s});
    EXPECT_EQ(recorder.State().path, In(u"a-3.wav"_s)) << "one at a time";
    Run(0.5);
    Stop();
    EXPECT_EQ(folder.Read(u"ziel/a.wav"_s), "sound");
    EXPECT_EQ(Cue(u"a-2.cue"_s), "titles");
}

TEST_F(MasterRecorderTest, EndsBeforeTheDiskIsFullWithAWholeFile) {
    list1.Append({Title(u"eins"_s, 20, 441)});
    mixer.PlayRow(1, 0);
    ASSERT_TRUE(Start(u"wav"_s));
    Run(1);
    ASSERT_TRUE(Written(1)) << "a slow disk may take its time";
    free = MasterRecorder::kLeastFree - 1;
    ASSERT_TRUE(test::WaitUntil([this] { return recorder.IsIdle(); })) << "its own timer looks";
    EXPECT_EQ(failures, QStringList{u"Der Mitschnitt wurde beendet, weil der Datenträger fast voll ist."_s});
    EXPECT_NEAR(double(LeftOf(In(u"a.wav"_s)).size()) / kRate, 1, 0.02);
    EXPECT_FALSE(Start(u"wav"_s));
    EXPECT_EQ(failures.last(), u"Auf dem Datenträger ist zu wenig Platz für einen Mitschnitt."_s);
    const QStringList both{u"a.cue"_s, u"a.wav"_s};
    EXPECT_TRUE(test::WaitUntil([&] { return QDir(In({})).entryList(QDir::Files) == both; }));
}

TEST_F(MasterRecorderTest, GoesOnInAFurtherFileWhenTheOutputIsOpenedAnew) {
    list1.Append({Title(u"eins"_s, 4, 441), Title(u"zwei"_s, 4, 882)});
    mixer.PlayRow(1, 0);
    ASSERT_TRUE(Start(u"wav"_s));
    Run(1);
    layer.StopAudio();
    ASSERT_TRUE(test::WaitUntil([this] { return recorder.State().status == RecordingStatus::Waiting; }));
    ASSERT_TRUE(layer.InitAudio(audio::kOffline, 1024));
    ASSERT_TRUE(test::WaitUntil([this] { return recorder.State().status == RecordingStatus::Running; }));
    mixer.PlayRow(1, 1);
    Run(1);
    EXPECT_TRUE(Written(2)) << "of both";
    Stop();
    EXPECT_NEAR(Crossings(LeftOf(In(u"a.wav"_s)), 0), 441, 3);
    EXPECT_NEAR(Crossings(LeftOf(In(u"a-2.wav"_s)), 0), 882, 8);
    ASSERT_TRUE(test::WaitUntil([this] { return Cue().contains("zwei"); }));
    EXPECT_TRUE(Cue().contains("FILE \"a-2.wav\" WAVE\r\n  TRACK 02 AUDIO\r\n    TITLE \"zwei\"")) << Cue().data();
    EXPECT_EQ(failures, QStringList());
}

TEST_F(MasterRecorderTest, WhatCannotBeginIsTold) {
    folder.Write(u"ziel"_s, "a file");
    EXPECT_FALSE(Start(u"wav"_s));
    EXPECT_EQ(failures, QStringList{u"Der Ordner\n%1\nkann nicht angelegt werden."_s.arg(folder.Path(u"ziel"_s))});
    layer.StopAudio();
    QFile::remove(folder.Path(u"ziel"_s));
    EXPECT_FALSE(Start(u"wav"_s));
    EXPECT_EQ(failures.last(), u"Es ist keine Soundkarte geöffnet."_s);
    EXPECT_TRUE(QDir(folder.Path(u"ziel"_s)).isEmpty());
    MasterRecorder without(mixer, [] { return nullptr; });
    QObject::connect(&without, &MasterRecorder::Failed, [this](const QString& text) { failures << text; });
    without.Start({folder.Path(), u"b"_s, u"wav"_s});
    EXPECT_EQ(failures.last(), u"Die Datei BASSenc.dll fehlt oder ist beschädigt."_s);
    EXPECT_TRUE(without.IsIdle());
}

} // namespace
} // namespace kalvo
