#include "playback/CueSheet.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

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
