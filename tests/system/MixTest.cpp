#include "support/SoundMaker.h"
#include "support/ToneMeter.h"
#include "system/DrivenProgram.h"

#include <QFile>
#include <sndfile.h>

#include <algorithm>

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;

constexpr double kLength = 20; ///< s, of each title
/** With the standard switch-over time of 9 s the rounded position must have reached 11 s. */
constexpr double kHandOverAt = 10.5;
constexpr double kFade = 6.0; ///< s, from one end to the other at the standard speed
/** Level of a tone at full volume after the two channels are averaged: half of the second channel is missing. */
constexpr double kFull = 0.2 * 0.75;
const std::vector<double> kTones{440, 1000, 2300};

QString Tone(const TestFolder& folder, std::size_t which) {
    return MakeSound(folder.Path(), u"Ton %1.wav"_s.arg(which + 1),
                     {.seconds = kLength, .frequency = kTones[which], .amplitude = 0.2});
}

ProgramResult Mix(const TestFolder& folder, const QStringList& titles) {
    return RunProgram(QStringList{u"--datenordner"_s, folder.Path(u"Kalvo"_s), u"--mix"_s, folder.Path(u"mix.wav"_s)} +
                      titles);
}

ToneMeter Measure(const TestFolder& folder) {
    SF_INFO info{};
    SNDFILE* file = sf_open(QFile::encodeName(folder.Path(u"mix.wav"_s)).constData(), SFM_READ, &info);
    if (!file || info.channels != 2) {
        ADD_FAILURE() << "no stereo mix";
        return {{}, 1};
    }
    std::vector<float> stereo(static_cast<std::size_t>(info.frames) * 2);
    sf_readf_float(file, stereo.data(), info.frames);
    sf_close(file);
    std::vector<float> mono(stereo.size() / 2);
    for (std::size_t i = 0; i < mono.size(); ++i)
        mono[i] = (stereo[2 * i] + stereo[2 * i + 1]) / 2;
    return {std::move(mono), info.samplerate};
}

TEST(MixTest, HandOversFollowRuleAndVolumeLawWithoutGapOrClick) {
    const TestFolder folder;
    const ProgramResult result = Mix(folder, {Tone(folder, 0), Tone(folder, 1), Tone(folder, 2)});
    EXPECT_EQ(result.exitCode, 0) << result.output.toStdString() << result.errors.toStdString();
    const ToneMeter meter = Measure(folder);
    // A title's abrupt start holds a little of every tone.
    const double second = meter.Onset(kTones, 1, 0.001, 1);
    const double third = second < 0 ? -1 : meter.Onset(kTones, 2, 0.001, second + 1);
    ASSERT_TRUE(second > 0 && third > 0);

    // One tick of the main timer, one step of the fade and the meter's own 20 ms may pass.
    EXPECT_GE(second, kHandOverAt - 0.02);
    EXPECT_LE(second, kHandOverAt + 0.2);
    EXPECT_NEAR(third - second, kHandOverAt, 0.2);
    EXPECT_NEAR(meter.Seconds(), third + kLength, 0.5);

    // From end to end: the new title rises to the full volume in the first half, then the old one falls.
    for (double part = 0.1; part < 1; part += 0.1) {
        const std::vector<double> levels = meter.Levels(kTones, third + part * kFade);
        EXPECT_NEAR(levels[1] / kFull, std::min(1.0, 2 - 2 * part), 0.03) << part;
        EXPECT_NEAR(levels[2] / kFull, std::min(1.0, 2 * part), 0.03) << part;
    }
    EXPECT_LT(meter.Levels(kTones, third + kFade + 0.3)[1], 0.0005);

    EXPECT_LT(meter.LongestSilence(0.02, 0.05, meter.Seconds() - 0.5), 0.01);
    // The first title fades to the second from the centre, where the second starts at full volume.
    EXPECT_LT(meter.ResidualPeak(kTones, 0.1, second - 0.05), -60);
    EXPECT_LT(meter.ResidualPeak(kTones, second + 0.05, third + kFade + 1), -60);
}

TEST(MixOfEveryLength, BeginsEachHandOverAtTheSecondOfTheRuleAtEverySpeed) {
    // The rule is asked every 0.1 s: at once for titles no longer than the switch-over time of 9 s, else when the
    // rounded position reaches 191 s.
    const std::pair<int, QStringList> cases[] = {{1, {u"0.10 s  Übergabe an Player 2 bei Sekunde 0 von 1"_s}},
                                                 {9, {u"0.10 s  Übergabe an Player 2 bei Sekunde 0 von 9"_s}},
                                                 {200,
                                                  {u"190.50 s  Übergabe an Player 2 bei Sekunde 191 von 200"_s,
                                                   u"381.00 s  Übergabe an Player 1 bei Sekunde 191 von 200"_s}}};
    const TestFolder folder;
    for (const auto& [length, expected] : cases) {
        QStringList titles;
        for (const int number : {1, 2, 3})
            titles << MakeSound(folder.Path(), u"%1 s, %2.wav"_s.arg(length).arg(number), {.seconds = double(length)});
        for (const int interval : {60, 45, 30, 15, 5}) {
            SCOPED_TRACE(testing::Message() << length << " s, a step each " << interval << " ms");
            folder.Write(u"Kalvo/kalvo.ini"_s, u"[Mixer]\r\nÜberblendgeschwindigkeit=%1\r\n"_s.arg(interval).toUtf8());
            const ProgramResult result = Mix(folder, titles);
            EXPECT_EQ(result.exitCode, 0) << result.output.toStdString();
            EXPECT_EQ(result.output.count(u"  Player "_s), titles.size());
            QStringList told;
            for (const QString& line : result.output.split(u'\n').filter(u"Übergabe"_s))
                told << line.trimmed();
            const double fade = 0.1 * interval; // from the centre to the end: a hundred steps
            if (length <= 9 && fade < length) {
                ASSERT_FALSE(told.empty());
                EXPECT_NEAR(told.takeLast().section(u' ', 0, 0).toDouble(), 0.1 + fade, 0.11)
                    << "the next follows as soon as the fade has ended";
            }
            EXPECT_EQ(told, expected) << told.join(u'\n').toStdString();
        }
    }
}

TEST(MixOfBadFiles, TheMusicGoesOnAndTheReportNamesThem) {
    const TestFolder folder;
    const QString missing = folder.Path(u"fehlt.mp3"_s);
    const QString text = folder.Write(u"nur Text.ogg"_s, "Das ist keine Musik.");
    EXPECT_EQ(Mix(folder, {text}).exitCode, 2);
    EXPECT_FALSE(QFile::exists(folder.Path(u"mix.wav"_s))) << "with nothing to play there is no mix";
    const QString empty = folder.Write(u"leer.mp3"_s, "");
    const ProgramResult result = Mix(folder, {missing, Tone(folder, 0), text, empty, Tone(folder, 1)});
    EXPECT_EQ(result.exitCode, 1);
    for (const char* name : {"fehlt", "nur Text", "leer"})
        EXPECT_TRUE((result.output + result.errors).contains(QLatin1String(name))) << name;
    const ToneMeter meter = Measure(folder);
    EXPECT_GE(meter.Onset(kTones, 0, 0.1), 0);
    EXPECT_GE(meter.Onset(kTones, 1, 0.1, 10), 0);
    EXPECT_LT(meter.LongestSilence(0.02, 0.05, meter.Seconds() - 0.5), 0.3);
}

} // namespace
} // namespace kalvo::test
