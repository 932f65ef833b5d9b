#include "playback/OutputWatch.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

const audio::OutputInfo kUsb{9, 2, "USB"}, kHdmi{9, 2, "HDMI"}, kAnalog{9, 2, "Analog"};
/** As long as no device plays. */
const audio::OutputInfo kSilent{9, audio::kNoSound, "Kein Ton"};

/** All that is said while the device is seen so for so many looks. */
QStringList Said(OutputWatch& watch, const audio::OutputInfo& info, int looks) {
    QStringList said;
    for (int look = 0; look < looks; ++look) {
        if (const auto news = watch.Look(info))
            said.append(news->text + (news->IsTrouble() ? QStringLiteral("!") : QString()));
    }
    return said;
}

TEST(OutputWatch, EachChangeIsSaidOnce) {
    OutputWatch watch;
    watch.Begin(kUsb);
    const struct {
        audio::OutputInfo info;
        int looks;
        QStringList said;
    } steps[] = {
        {kUsb, 50, {}},
        {kSilent, 10, {}}, // half a second: a replacement may come
        {kHdmi, 50, {QStringLiteral("Soundkarte nicht mehr da, Wiedergabe auf: HDMI!")}},
        {kSilent, 5, {}},
        {kHdmi, 5, {}},
        {kSilent, 100, {QStringLiteral("Soundkarte nicht mehr da, kein Ton: HDMI!")}},
        {kAnalog, 5, {QStringLiteral("Soundkarte nicht mehr da, Wiedergabe auf: Analog!")}},
        {kUsb, 50, {QStringLiteral("Soundkarte wieder da: USB")}},
        {kSilent, 5, {}}, // a restarted sound server
        {kUsb, 5, {}},
    };
    for (const auto& step : steps)
        EXPECT_EQ(Said(watch, step.info, step.looks), step.said) << "step " << &step - steps;
    EXPECT_EQ(Said(watch, kSilent, 30).size(), 1);
    for (const audio::OutputInfo& chosen : {kHdmi, kSilent}) {
        watch.Begin(chosen);
        EXPECT_EQ(Said(watch, chosen, 30), QStringList()) << "what the user has chosen is no news";
    }
}

} // namespace
} // namespace kalvo
