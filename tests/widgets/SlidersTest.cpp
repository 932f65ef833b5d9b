#include "widgets/FaderSlider.h"
#include "widgets/PitchSlider.h"
#include "widgets/PositionSlider.h"
#include "widgets/SkinStyle.h"

#include "support/WindowActs.h"

#include <QtWidgets>
#include <gmock/gmock.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

using ::testing::ElementsAre;

void Press(QWidget& widget, std::initializer_list<int> keys) {
    for (const int key : keys)
        test::PressKey(widget, key);
}

void Mouse(QWidget& widget, QEvent::Type type, double x, double y) {
    const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, QPointF(x, y), widget.mapToGlobal(QPointF(x, y)), button, held, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

TEST(FaderSliderTest, KeysStepAndStopAtTheEnds) {
    FaderSlider fader;
    Press(fader, {Qt::Key_Right});
    EXPECT_EQ(fader.value(), 5);
    Press(fader, {Qt::Key_Left, Qt::Key_Left});
    EXPECT_EQ(fader.value(), -5);
    Press(fader, {Qt::Key_End, Qt::Key_Right});
    EXPECT_EQ(fader.value(), 100);
}

TEST(FaderSliderTest, TheHandleIsDraggedAtAnyHeightAndADoubleClickCentres) {
    FaderSlider fader;
    fader.resize(300, 80);
    Mouse(fader, QEvent::MouseButtonPress, 150, 78);
    EXPECT_TRUE(fader.isSliderDown());
    Mouse(fader, QEvent::MouseMove, 600, 0);
    EXPECT_EQ(fader.value(), 100);
    Mouse(fader, QEvent::MouseButtonRelease, 600, 0);
    EXPECT_FALSE(fader.isSliderDown());
    Mouse(fader, QEvent::MouseButtonPress, 40, 40);
    EXPECT_EQ(fader.value(), 90) << "a press beside the handle moves it by a step, never at once to the pointer";
    Mouse(fader, QEvent::MouseButtonDblClick, 40, 40);
    EXPECT_EQ(fader.value(), 0);
}

struct Drags {
    explicit Drags(PositionSlider& slider) {
        QObject::connect(&slider, &PositionSlider::DragBegan, &slider, [this](double at) { began.push_back(at); });
        QObject::connect(&slider, &PositionSlider::Dragged, &slider, [this](double at) { moved.push_back(at); });
        QObject::connect(&slider, &PositionSlider::DragEnded, &slider, [this](double at) { ended.push_back(at); });
    }
    std::vector<double> began, moved, ended;
};

TEST(PositionSliderTest, DraggingTellsFractionsAndHoldsTheLineOfItsTitle) {
    PositionSlider slider(1);
    const Drags drags(slider);
    slider.resize(101, 40);
    slider.SetTitle(200, 9, -1);
    slider.SetPosition(0.1);
    Mouse(slider, QEvent::MouseButtonPress, 50, 20);
    slider.SetPosition(0.1);
    EXPECT_EQ(slider.value(), 100000) << "the display must not move the line from under the hand";
    Mouse(slider, QEvent::MouseMove, 500, 20);
    Mouse(slider, QEvent::MouseButtonRelease, 500, 20);
    EXPECT_THAT(drags.began, ElementsAre(0.5));
    EXPECT_THAT(drags.moved, ElementsAre(1.0));
    EXPECT_THAT(drags.ended, ElementsAre(1.0));
    slider.SetPosition(0.25);
    EXPECT_EQ(slider.value(), 50000);
    Mouse(slider, QEvent::MouseButtonPress, 50, 20);
    slider.SetTitle(300, 9, -1);
    slider.SetPosition(0);
    EXPECT_EQ(slider.value(), 0) << "a new title ends the drag of the old one";
}

TEST(PositionSliderTest, PaintsTheWavePlayedAndToComeAndAThinLineWhereItIsNotKnown) {
    PositionSlider slider(1);
    slider.resize(302, 60);
    slider.SetTitle(300, 0, -1);
    slider.SetPosition(0.5);
    auto wave = std::make_shared<Waveform>();
    wave->columns.fill({255, 255});
    wave->known = Waveform::kColumns * 3 / 4;
    slider.SetWave(wave);
    const auto heightAt = [&slider](int x, const QColor& colour) {
        const QImage image = slider.grab().toImage();
        int height = 0;
        for (int y = 0; y < image.height(); ++y)
            height += image.pixelColor(x, y) == colour ? 1 : 0;
        return height;
    };
    const Skin& skin = SkinStyle::Colours();
    EXPECT_GT(heightAt(31, skin.wavePlayed), 45) << "the first pixel of a bar";
    EXPECT_EQ(heightAt(33, skin.wavePlayed), 0) << "the gap behind it";
    EXPECT_GT(heightAt(202, skin.p1), 45);
    EXPECT_EQ(heightAt(261, skin.p1), 1);
    slider.SetWave(nullptr);
    EXPECT_GT(heightAt(261, skin.p1), 5) << "the plain band";
}

TEST(PositionSliderTest, KeysStepOnlyWithATitle) {
    PositionSlider slider(2);
    const Drags drags(slider);
    Press(slider, {Qt::Key_Right});
    Mouse(slider, QEvent::MouseButtonPress, 5, 5);
    EXPECT_TRUE(drags.began.empty());
    slider.SetTitle(100, 0, -1);
    slider.SetPosition(0.5);
    Press(slider, {Qt::Key_Right, Qt::Key_PageDown, Qt::Key_End});
    EXPECT_THAT(drags.ended, ElementsAre(0.55, 0.25));
}

TEST(PitchSliderTest, ADoubleClickGivesTheTitlesOwnSpeed) {
    PitchSlider slider;
    slider.setValue(33);
    Mouse(slider, QEvent::MouseButtonDblClick, 5, 5);
    EXPECT_EQ(slider.value(), 0);
}

} // namespace
} // namespace kalvo
