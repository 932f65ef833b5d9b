#include "playback/OutputWatch.h"

#include <QStringList>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

audio::OutputInfo Playing(const char* name) {
    audio::OutputInfo info;
    info.device = 2;
    info.deviceName = name;
    return info;
}

/** As long as no device plays. */
audio::OutputInfo Silent() {
    audio::OutputInfo info;
    info.deviceName = "Kein Ton";
    return info;
}

/** All that is said while the device is seen so for so many looks. */
QStringList Said(OutputWatch& watch, const audio::OutputInfo& info, int looks) {
    QStringList said;
    for (int look = 0; look < looks; ++look) {
        if (const auto news = watch.Look(info)) {
            said.append(news->text + (news->IsTrouble() ? QStringLiteral("!") : QString()));
        }
    }
    return said;
}

TEST(OutputWatch, EachChangeIsSaidOnce) {
    OutputWatch watch;
    watch.Begin(Playing("USB"));
    const struct {
        audio::OutputInfo info;
        int looks;
        QStringList said;
    } steps[] = {
        {Playing("USB"), 50, {}},
        {Silent(), 10, {}}, // half a second: a replacement may come
        {Playing("HDMI"), 50, {QStringLiteral("Soundkarte nicht mehr da, Wiedergabe auf: HDMI!")}},
        {Silent(), 5, {}},
        {Playing("HDMI"), 5, {}},
        {Silent(), 100, {QStringLiteral("Soundkarte nicht mehr da, kein Ton: HDMI!")}},
        {Playing("Analog"), 5, {QStringLiteral("Soundkarte nicht mehr da, Wiedergabe auf: Analog!")}},
        {Playing("USB"), 50, {QStringLiteral("Soundkarte wieder da: USB")}},
        {Silent(), 5, {}}, // a restarted sound server
        {Playing("USB"), 5, {}},
    };
    int number = 0;
    for (const auto& step : steps) {
        EXPECT_EQ(Said(watch, step.info, step.looks), step.said) << "step " << number;
        ++number;
    }
}

TEST(OutputWatch, AChoiceOfTheUserIsNoNews) {
    OutputWatch watch;
    watch.Begin(Playing("USB"));
    EXPECT_EQ(Said(watch, Silent(), 30).size(), 1);
    watch.Begin(Playing("HDMI"));
    EXPECT_EQ(Said(watch, Playing("HDMI"), 30), QStringList());
    watch.Begin(Silent());
    EXPECT_EQ(Said(watch, Silent(), 30), QStringList());
}

} // namespace
} // namespace kalvo
