#include "widgets/LevelBar.h"
#include "widgets/MeterDisplay.h"
#include "widgets/SkinStyle.h"

#include <QApplication>
#include <QImage>
#include <gtest/gtest.h>

#include <set>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

constexpr MeterBallistics::Clock::time_point start{1h};

MeterReading Reading(float level) {
    MeterReading reading;
    reading.levels = {level, level / 2};
    reading.bands.fill(level);
    return reading;
}

struct MeterDisplayTest : ::testing::Test {
    MeterDisplayTest() {
        SkinStyle::Apply(*qApp, u"Dark Blue"_s, u"klein"_s, u"klein"_s);
        display.resize(260, 40);
    }
    /** Pixels of exactly this colour. */
    int Count(const QColor& colour) {
        const QImage image = display.grab().toImage();
        int count = 0;
        for (int i = 0; i < image.width() * image.height(); ++i)
            count += image.pixelColor(i % image.width(), i / image.width()) == colour ? 1 : 0;
        return count;
    }

    MeterDisplay display;
};

TEST(MeterBallisticsTest, RisesAtOnceFallsEvenlyAndThePeakStandsASecond) {
    MeterBallistics meter;
    meter.Show(0.2F, start);
    meter.Show(0.9F, start + 50ms);
    EXPECT_FLOAT_EQ(meter.Value(), 0.9F);
    meter.Show(0, start + 100ms);
    EXPECT_NEAR(meter.Value(), 0.9 - 0.05 * MeterBallistics::kFall, 1e-4);
    meter.Show(0, start + 1050ms);
    EXPECT_EQ(meter.Value(), 0);
    EXPECT_FLOAT_EQ(meter.Peak(), 0.9F) << "still stands";
    meter.Show(0, start + 1250ms);
    EXPECT_NEAR(meter.Peak(), 0.9 - 0.2 * MeterBallistics::kPeakFall, 1e-4);
    meter.Show(7, start + 1300ms);
    EXPECT_EQ(meter.Value(), 1) << "cut to the scale";
    meter.Show(0, start + 1h);
    EXPECT_EQ(meter.Peak(), 0);
}

TEST_F(MeterDisplayTest, EveryStyleLooksDifferentAndGrowsWithTheLevel) {
    std::set<QByteArray> looks;
    for (int style = 0; style <= static_cast<int>(MeterStyle::TwoEllipses); ++style) {
        MeterDisplay fresh;
        fresh.resize(260, 40);
        fresh.SetStyle(static_cast<MeterStyle>(style));
        fresh.Show(Reading(0), start);
        const QImage silent = fresh.grab().toImage();
        for (int i = 1; i <= 20; ++i) // needles need a while
            fresh.Show(Reading(0.6F), start + i * 50ms);
        const QImage loud = fresh.grab().toImage();
        EXPECT_EQ(loud == silent, style == static_cast<int>(MeterStyle::None)) << style;
        looks.insert(QByteArray(reinterpret_cast<const char*>(loud.constBits()), loud.sizeInBytes()));
    }
    EXPECT_EQ(looks.size(), 9U);
}

TEST_F(MeterDisplayTest, TheClippingLightStaysTwoSeconds) {
    MeterReading clipped = Reading(1);
    clipped.clipped = {false, true};
    display.Show(clipped, start);
    EXPECT_FALSE(display.IsClipped(0));
    EXPECT_GT(Count(SkinStyle::Colours().onAir), 20);
    display.Show(Reading(0), start + 1900ms);
    EXPECT_TRUE(display.IsClipped(1));
    display.Show(Reading(0), start + 2000ms);
    EXPECT_FALSE(display.IsClipped(1));
    EXPECT_EQ(Count(SkinStyle::Colours().onAir), 0);
}

TEST(LevelBarTest, ThePeakStandsForASecondAndTheLightOfFullScaleForTwo) {
    LevelBar bar;
    bar.resize(78, 20); // ten segments
    bar.SetLevels(0.8F, 2.0F, start);
    EXPECT_EQ(bar.Lit(0), 8);
    EXPECT_EQ(bar.Lit(1), 10);
    bar.SetLevels(0.2F, -1.0F, start + 900ms);
    EXPECT_EQ(bar.Lit(0), 2);
    EXPECT_EQ(bar.Peak(0), 7);
    bar.SetLevels(0.2F, 0, start + 1000ms);
    EXPECT_EQ(bar.Peak(0), 1);
    EXPECT_EQ(bar.Peak(1), -1);
    bar.SetLevels(0.99F, 0, start + 1900ms);
    EXPECT_FALSE(bar.IsClipped(0));
    EXPECT_TRUE(bar.IsClipped(1));
    bar.SetLevels(0, 0, start + 2s);
    EXPECT_FALSE(bar.IsClipped(1));
}

} // namespace
} // namespace kalvo
