#include "base/PlayTime.h"

#include <cmath>
#include <gtest/gtest.h>

namespace kalvo {

TEST(PlayTime, Formats) {
    const struct {
        double seconds;
        const char* text;
    } cases[] = {{0, "00:00"},     {59.49, "00:59"}, {59.5, "01:00"}, {61, "01:01"},
                 {6000, "100:00"}, {-3, "00:00"},    {NAN, "00:00"},  {INFINITY, "00:00"}};
    for (const auto& [seconds, text] : cases)
        EXPECT_EQ(PlayTime::Format(seconds).toStdString(), text);
}

TEST(PlayTime, Parses) {
    const struct {
        const char* text;
        int seconds;
    } cases[] = {{"03:41", 221},
                 {"3:41", 221},
                 {"100:00", 6000},
                 {"00:00", 0},
                 {"0", -1},
                 {"", -1},
                 {":30", -1},
                 {"1:3", -1},
                 {"1:60", -1},
                 {"-1:30", -1},
                 {"1:2:03", -1},
                 {"+1:03", -1},
                 {"99999999999:00", -1},
                 {"40000000:00", -1}};
    for (const auto& [text, seconds] : cases)
        EXPECT_EQ(PlayTime::Parse(QString::fromUtf8(text)), seconds) << text;
}

} // namespace kalvo
