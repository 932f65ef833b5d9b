#include "playback/RecordingOptions.h"

#include "base/Settings.h"
#include "playback/CueSheet.h"
#include "support/TestFolder.h"

#include <QFile>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

TEST(RecordingOptionsTest, NamesBecomeFileNames) {
    const std::pair<QString, QString> cases[] = {{u"  Hochzeit  Anna & Ben "_s, u"Hochzeit Anna & Ben"_s},
                                                 {u"../../etc/passwd"_s, u"etcpasswd"_s},
                                                 {u"Fest 21:30?.MP3"_s, u"Fest 2130"_s},
                                                 {u".versteckt"_s, u"versteckt"_s},
                                                 {u"Größe\x01.x.wav"_s, u"Größe.x"_s},
                                                 {u"/"_s, QString()},
                                                 {QString(300, u'a'), QString(100, u'a')}};
    for (const auto& [typed, name] : cases)
        EXPECT_EQ(CleanRecordingName(typed), name) << typed.toStdString();
    EXPECT_EQ(DefaultRecordingName(QDateTime(QDate(2026, 11, 21), QTime(23, 5))), u"Mitschnitt 2026-11-21 23.05"_s);
}

TEST(RecordingOptionsTest, ANameIsFreeWhenNeitherSoundNorCueSheetHasIt) {
    const test::TestFolder folder;
    EXPECT_EQ(FreeRecordingName(folder.Path(), u"a"_s, u".mp3"_s), u"a"_s);
    folder.Write(u"a.wav"_s, "x");
    EXPECT_EQ(FreeRecordingName(folder.Path(), u"a"_s, u".mp3"_s), u"a"_s);
    folder.Write(u"a.mp3"_s, "x");
    folder.Write(u"a-2.cue"_s, "x");
    ASSERT_TRUE(QFile::link(folder.Path(u"gone"_s), folder.Path(u"a-3.mp3"_s)));
    EXPECT_EQ(FreeRecordingName(folder.Path(), u"a"_s, u".mp3"_s), u"a-4"_s);
}

TEST(RecordingOptionsTest, SettingsThatMakeNoSenseGiveTheDefaults) {
    const test::TestFolder folder;
    Settings settings(folder.Path(u"kalvo.ini"_s));
    const QString first = QLatin1String(RecordingFormats().front().key) + u" in /m"_s;
    const auto read = [&settings] {
        const RecordingOptions options = RecordingOptions::Read(settings, u"/m"_s);
        return QString(options.format + u" in "_s + options.folder);
    };
    EXPECT_EQ(read(), first);
    RecordingOptions{u"ogg"_s, u"/ziel"_s}.Write(settings);
    EXPECT_EQ(read(), u"ogg in /ziel"_s);
    RecordingOptions{u"wma"_s, u"ziel"_s}.Write(settings);
    EXPECT_EQ(read(), first);
    RecordingOptions{u"wav"_s, u'/' + QString(300, u'x')}.Write(settings);
    EXPECT_EQ(read(), u"wav in /m"_s) << "longer than a value can be";
}

TEST(CueSheetTest, TracksStandBelowTheirFilesWithTimesInFrames) {
    const QByteArray text = CueSheetText({{u"a.wav"_s, u"Größe \"12\""_s, u"Anna\nB."_s, 0.5},
                                          {u"a.wav"_s, u"Zwei"_s, {}, 3725.996},
                                          {u"a-2.wav"_s, u"Zwei"_s, {}, 0}});
    EXPECT_EQ(text.toStdString(), "\xEF\xBB\xBFREM Mitschnitt\r\n"
                                  "FILE \"a.wav\" WAVE\r\n"
                                  "  TRACK 01 AUDIO\r\n"
                                  "    TITLE \"Größe '12'\"\r\n"
                                  "    PERFORMER \"Anna B.\"\r\n"
                                  "    INDEX 00 00:00:00\r\n"
                                  "    INDEX 01 00:00:38\r\n"
                                  "  TRACK 02 AUDIO\r\n"
                                  "    TITLE \"Zwei\"\r\n"
                                  "    INDEX 01 62:06:00\r\n"
                                  "FILE \"a-2.wav\" WAVE\r\n"
                                  "  TRACK 03 AUDIO\r\n"
                                  "    TITLE \"Zwei\"\r\n"
                                  "    INDEX 01 00:00:00\r\n");
    EXPECT_TRUE(CueSheetText({{u"b.mp3"_s, u"x"_s, {}, -1}}).contains("FILE \"b.mp3\" MP3\r\n"));
}

} // namespace
} // namespace kalvo
