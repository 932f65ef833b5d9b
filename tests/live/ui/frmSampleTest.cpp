#include "live/ui/frmSample.h"

#include "archive/ui/WindowActs.h"
#include "live/ui/PadButton.h"
#include "live/ui/frmSampleEinstellungen.h"
#include "playback/FakeDesk.h"

#include <QLabel>
#include <QLineEdit>
#include <QPointingDevice>
#include <QSlider>
#include <QTouchEvent>
#include <QTreeWidget>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

template<typename Widget>
Widget& PartIn(const QWidget& window, const QString& name) {
    auto* found = window.findChild<Widget*>(name);
    if (!found)
        throw std::runtime_error(name.toStdString());
    return *found;
}

void Mouse(QWidget& widget, QEvent::Type type, const QPoint& at) {
    const bool isRelease = type == QEvent::MouseButtonRelease;
    QMouseEvent event(type, at, widget.mapToGlobal(at), type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                      isRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

struct frmSampleTest : ::testing::Test, test::FakeDesk {
    frmSampleTest() {
        settings.PutNumber(u"Sample"_s, u"Pegelabsenkung"_s, 40);
        SampleSlots slots;
        slots[0] = {u"Tusch"_s, u"/tusch-4"_s};
        slots[9] = {u"Verkehrston"_s, u"/ton-4"_s};
        sampler.SetSlots(slots);
    }
    QWidget& Pad(const frmSample& window, int pad) { return PartIn<QWidget>(window, u"cmdSample%1"_s.arg(pad)); }

    Settings settings{folder.Path(u"kalvo.ini"_s)};
    Sampler sampler{mixer};
};

TEST_F(frmSampleTest, APadSoundsFromThePressToTheReleaseWhereverThePointerIs) {
    frmSample window(sampler, settings);
    window.show();
    EXPECT_TRUE(window.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(PartIn<QAbstractButton>(window, u"cmdSample1"_s).text(), u"Tusch"_s);
    EXPECT_EQ(PartIn<QAbstractButton>(window, u"cmdSample2"_s).text(), u"Kein Sample zugewiesen"_s);
    QWidget& pad = Pad(window, 10);
    Mouse(pad, QEvent::MouseButtonPress, {5, 5});
    EXPECT_EQ(sampler.HeldPad(), 10);
    Mouse(pad, QEvent::MouseMove, {500, 500});
    EXPECT_EQ(sampler.HeldPad(), 10);
    Mouse(pad, QEvent::MouseButtonRelease, {500, 500});
    EXPECT_EQ(sampler.HeldPad(), 0);
    Mouse(Pad(window, 2), QEvent::MouseButtonPress, {5, 5});
    EXPECT_EQ(sampler.HeldPad(), 0) << "unassigned";
    Mouse(pad, QEvent::MouseButtonPress, {5, 5});
    window.hide();
    EXPECT_EQ(sampler.HeldPad(), 0) << "closing ends the sound";
}

TEST_F(frmSampleTest, APadIsHeldByTouchAndBySpaceBar) {
    frmSample window(sampler, settings);
    window.show();
    QWidget& pad = Pad(window, 1);
    const QPointingDevice screen(u"Finger"_s, 1, QInputDevice::DeviceType::TouchScreen,
                                 QPointingDevice::PointerType::Finger, QInputDevice::Capability::Position, 1, 0);
    for (const QEvent::Type end : {QEvent::TouchEnd, QEvent::TouchCancel}) {
        QTouchEvent touch(QEvent::TouchBegin, &screen);
        QApplication::sendEvent(&pad, &touch);
        EXPECT_EQ(sampler.HeldPad(), 1);
        QTouchEvent away(end, &screen);
        QApplication::sendEvent(&pad, &away);
        EXPECT_EQ(sampler.HeldPad(), 0);
    }
    test::PressKey(pad, Qt::Key_Space);
    EXPECT_EQ(sampler.HeldPad(), 1);
    QKeyEvent repeat(QEvent::KeyRelease, Qt::Key_Space, Qt::NoModifier, {}, true);
    QApplication::sendEvent(&pad, &repeat);
    EXPECT_EQ(sampler.HeldPad(), 1) << "repeats are no release";
    QFocusEvent lost(QEvent::FocusOut);
    QApplication::sendEvent(&pad, &lost);
    EXPECT_EQ(sampler.HeldPad(), 0);
}

TEST_F(frmSampleTest, TheLevelReductionIsShownAtOnceAndStoredAtTheEnd) {
    {
        frmSample window(sampler, settings);
        window.show();
        EXPECT_EQ(PartIn<QLabel>(window, u"Label1"_s).text(), u"40 % "_s);
        PartIn<QSlider>(window, u"Slider1"_s).setValue(100);
        EXPECT_EQ(PartIn<QLabel>(window, u"Label1"_s).text(), u"100 % "_s);
        EXPECT_EQ(sampler.Reduction(), 100);
        EXPECT_EQ(frmSample::StoredReduction(settings), 40) << "not before it closes";
        window.close();
        EXPECT_EQ(frmSample::StoredReduction(settings), 100);
    }
    settings.PutSetting(u"Sample"_s, u"Pegelabsenkung"_s, u"viel"_s);
    EXPECT_EQ(frmSample::StoredReduction(settings), 50);
}

TEST_F(frmSampleTest, TheWindowIsDraggedFromItsSurfaceAndItsFrame) {
    frmSample window(sampler, settings);
    window.show();
    for (QWidget* place : {static_cast<QWidget*>(&window), &PartIn<QWidget>(window, u"Frame1"_s)}) {
        window.move(100, 100);
        Mouse(*place, QEvent::MouseButtonPress, {1, 1});
        Mouse(*place, QEvent::MouseMove, {31, 21});
        EXPECT_EQ(window.pos(), QPoint(130, 120)) << place->objectName().toStdString();
        Mouse(*place, QEvent::MouseButtonRelease, {1, 1});
    }
}

struct frmSampleEinstellungenTest : frmSampleTest {
    frmSampleEinstellungen::Parts Parts() {
        return {layer.Audio(), folder.Path(), [this](const SampleSlots& slots) {
                    saved = slots;
                    return writable;
                }};
    }
    SampleSlots saved;
    bool writable = true;
};

TEST_F(frmSampleEinstellungenTest, RowsAreEditedInTheFieldsAndWrittenAtTheEnd) {
    frmSampleEinstellungen window(sampler.Slots(), Parts());
    window.show();
    auto& list = PartIn<QTreeWidget>(window, u"ListView1"_s);
    auto& title = PartIn<QLineEdit>(window, u"txtTitel"_s);
    auto& path = PartIn<QLineEdit>(window, u"txtTitelPfad"_s);
    EXPECT_EQ(list.topLevelItemCount(), 10);
    EXPECT_EQ(title.text(), u"Tusch"_s);
    EXPECT_EQ(path.text(), u"/tusch-4"_s);
    window.Choose(u"/m/Neuer Gong.wav"_s);
    EXPECT_EQ(title.text(), u"Neuer Gong.wav"_s) << "the file's name";
    title.clear();
    title.insert(u"Gong"_s); // as typed
    EXPECT_EQ(list.topLevelItem(0)->text(1), u"Gong"_s);
    list.setCurrentItem(list.topLevelItem(9));
    window.findChild<QAction*>(u"SampleLoeschen"_s)->trigger();
    EXPECT_TRUE(path.text().isEmpty());
    list.setCurrentItem(list.topLevelItem(1));
    path.insert(u"/m/"_s + QString(150, u'x'));
    test::Answers answers({u"ok"_s});
    Q_EMIT path.editingFinished();
    EXPECT_TRUE(path.text().isEmpty()) << "refused, not cut";
    EXPECT_TRUE(answers.Said().value(0).contains(u"Der Pfad ist zu lang"_s));
    window.close();
    EXPECT_EQ(saved[0], (SampleSlot{u"Gong"_s, u"/m/Neuer Gong.wav"_s}));
    EXPECT_EQ(saved[1], SampleSlot());
    EXPECT_EQ(saved[9], SampleSlot());
}

TEST_F(frmSampleEinstellungenTest, AFileIsTestedAndAFailedSaveKeepsTheWindow) {
    writable = false;
    frmSampleEinstellungen window(sampler.Slots(), Parts());
    window.show();
    const auto before = fake.streams.size();
    PartIn<QAbstractButton>(window, u"Command2"_s).click();
    EXPECT_EQ(fake.streams.size(), before + 1);
    EXPECT_EQ(fake.streams.rbegin()->second.activity, audio::Activity::Playing);
    PartIn<QAbstractButton>(window, u"Command3"_s).click();
    EXPECT_EQ(fake.streams.size(), before);
    window.Choose(u"/broken"_s);
    test::Answers answers({u"ok"_s, u"Nein"_s, u"Ja"_s});
    PartIn<QAbstractButton>(window, u"Command2"_s).click();
    EXPECT_EQ(answers.Said().value(0), u"Sampler-Einstellungen|Kann diese Datei nicht wiedergeben!"_s);
    window.close();
    EXPECT_TRUE(window.isVisible());
    window.close();
    EXPECT_FALSE(window.isVisible());
}

} // namespace
} // namespace kalvo
