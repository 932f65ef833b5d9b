#include "widgets/Spoken.h"

#include "widgets/HandOverLine.h"
#include "widgets/PitchSlider.h"
#include "widgets/PositionSlider.h"

#include <QComboBox>
#include <QLabel>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

QAccessibleInterface& SpokenOf(QWidget& widget) {
    Spoken::Install();
    return *QAccessible::queryAccessibleInterface(&widget);
}

TEST(SpokenTest, ASliderTellsItsValueInItsOwnUnitAndTakesIt) {
    PitchSlider pitch;
    QAccessibleInterface& spoken = SpokenOf(pitch);
    spoken.valueInterface()->setCurrentValue(1.5);
    EXPECT_EQ(pitch.value(), 15);
    EXPECT_EQ(spoken.text(QAccessible::Value), u"+1,5 %"_s);
    spoken.valueInterface()->setCurrentValue(400);
    EXPECT_EQ(spoken.valueInterface()->currentValue(), 12.0) << "cut to the range";
}

TEST(SpokenTest, ThePositionIsToldInSecondsAndMovesTheTitle) {
    PositionSlider position(1);
    QAccessibleInterface& spoken = SpokenOf(position);
    double moved = -1;
    QObject::connect(&position, &PositionSlider::DragEnded, [&moved](double fraction) { moved = fraction; });
    spoken.valueInterface()->setCurrentValue(10);
    EXPECT_EQ(moved, -1) << "without a title";
    EXPECT_EQ(spoken.text(QAccessible::Value), u"Kein Titel"_s);
    position.SetTitle(200, 9, -1);
    spoken.valueInterface()->setCurrentValue(50);
    EXPECT_EQ(moved, 0.25);
    EXPECT_EQ(spoken.valueInterface()->currentValue(), 50.0);
    EXPECT_EQ(spoken.text(QAccessible::Value), u"00:50 von 03:20"_s);
}

TEST(SpokenTest, TextsAreSaid) {
    HandOverLine line;
    line.SetView({HandOverView::Kind::Coming, 2, 5});
    EXPECT_EQ(SpokenOf(line).text(QAccessible::Name), u"Übergabe an Player 2 in 5 s"_s);
    QComboBox box;
    box.setAccessibleName(u"Tempo"_s);
    box.addItem(u"schnell"_s);
    EXPECT_EQ(SpokenOf(box).text(QAccessible::Name), u"Tempo"_s);
    EXPECT_EQ(SpokenOf(box).text(QAccessible::Value), u"schnell"_s);
    QLabel label(u"12"_s);
    label.setAccessibleName(u"Gefunden"_s);
    EXPECT_EQ(SpokenOf(label).text(QAccessible::Name), u"Gefunden: 12"_s);
}

} // namespace
} // namespace kalvo
