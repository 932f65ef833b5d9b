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
    for (const auto& [text, seconds] :
         {std::pair("03:41", 221), std::pair("3:41", 221), std::pair("100:00", 6000), std::pair("00:00", 0)})
        EXPECT_EQ(PlayTime::Parse(QString::fromLatin1(text)), seconds) << text;
    for (const char* none :
         {"0", "", ":30", "1:3", "1:60", "-1:30", "1:2:03", "+1:03", "99999999999:00", "40000000:00"})
        EXPECT_EQ(PlayTime::Parse(QString::fromLatin1(none)), -1) << none;
}

} // namespace kalvo
