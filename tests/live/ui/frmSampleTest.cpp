#include "live/ui/frmSample.h"

#include "live/ui/PadButton.h"
#include "live/ui/frmSampleEinstellungen.h"
#include "playback/FakeDesk.h"
#include "support/PartOf.h"
#include "support/WindowActs.h"

#include <QLabel>
#include <QLineEdit>
#include <QPointingDevice>
#include <QSlider>
#include <QTouchEvent>
#include <QTreeWidget>
#include <gtest/gtest.h>

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;

void Mouse(QWidget& widget, QEvent::Type type, const QPoint& at) {
    const bool isRelease = type == QEvent::MouseButtonRelease;
    QMouseEvent event(type, at, widget.mapToGlobal(at), type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                      isRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

struct frmSampleTest : ::testing::Test, FakeDesk {
    frmSampleTest() {
        settings.PutNumber(u"Sample"_s, u"Pegelabsenkung"_s, 40);
        SampleSlots slots;
        slots[0] = {u"Tusch"_s, u"/tusch-4"_s};
        slots[9] = {u"Verkehrston"_s, u"/ton-4"_s};
        sampler.SetSlots(slots);
    }

    Settings settings{folder.Path(u"kalvo.ini"_s)};
    Sampler sampler{mixer};
};

struct frmSamplePadsTest : frmSampleTest {
    frmSamplePadsTest() { window.show(); }
    /** What is held after an event for one of its controls. */
    int HeldAfter(QWidget& widget, QEvent&& event) {
        QApplication::sendEvent(&widget, &event);
        return sampler.HeldPad();
    }

    frmSample window{sampler, settings};
};

TEST_F(frmSamplePadsTest, APadSoundsFromThePressToTheReleaseWhereverThePointerIs) {
    EXPECT_TRUE(window.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(Part<QAbstractButton>(window, "cmdSample1")->text(), u"Tusch"_s);
    QWidget& pad = *Part(window, "cmdSample10");
    Mouse(pad, QEvent::MouseButtonPress, {5, 5});
    EXPECT_EQ(sampler.HeldPad(), 10);
    Mouse(pad, QEvent::MouseMove, {500, 500});
    EXPECT_EQ(sampler.HeldPad(), 10);
    Mouse(pad, QEvent::MouseButtonRelease, {500, 500});
    EXPECT_EQ(sampler.HeldPad(), 0);
    Mouse(*Part(window, "cmdSample2"), QEvent::MouseButtonPress, {5, 5});
    EXPECT_EQ(sampler.HeldPad(), 0) << "unassigned";
    Mouse(pad, QEvent::MouseButtonPress, {5, 5});
    window.hide();
    EXPECT_EQ(sampler.HeldPad(), 0) << "closing ends the sound";
}

TEST_F(frmSamplePadsTest, APadIsHeldByTouchAndBySpaceBar) {
    QWidget& pad = *Part(window, "cmdSample1");
    const QPointingDevice screen(u"Finger"_s, 1, QInputDevice::DeviceType::TouchScreen,
                                 QPointingDevice::PointerType::Finger, QInputDevice::Capability::Position, 1, 0);
    for (const QEvent::Type end : {QEvent::TouchEnd, QEvent::TouchCancel}) {
        EXPECT_EQ(HeldAfter(pad, QTouchEvent(QEvent::TouchBegin, &screen)), 1);
        EXPECT_EQ(HeldAfter(pad, QTouchEvent(end, &screen)), 0);
    }
    EXPECT_EQ(HeldAfter(pad, QKeyEvent(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier)), 1);
    EXPECT_EQ(HeldAfter(pad, QKeyEvent(QEvent::KeyRelease, Qt::Key_Space, Qt::NoModifier, {}, true)), 1)
        << "repeats are no release";
    EXPECT_EQ(HeldAfter(pad, QFocusEvent(QEvent::FocusOut)), 0);
}

TEST_F(frmSamplePadsTest, TheLevelReductionIsShownAtOnceAndStoredAtTheEnd) {
    EXPECT_EQ(Part<QLabel>(window, "Label1")->text(), u"40 % "_s);
    Part<QSlider>(window, "Slider1")->setValue(100);
    EXPECT_EQ(Part<QLabel>(window, "Label1")->text(), u"100 % "_s);
    EXPECT_EQ(sampler.Reduction(), 100);
    EXPECT_EQ(frmSample::StoredReduction(settings), 40) << "not before it closes";
    window.close();
    EXPECT_EQ(frmSample::StoredReduction(settings), 100);
    settings.PutSetting(u"Sample"_s, u"Pegelabsenkung"_s, u"viel"_s);
    EXPECT_EQ(frmSample::StoredReduction(settings), 50);
}

struct frmSampleEinstellungenTest : frmSampleTest {
    frmSampleEinstellungenTest() { window.show(); }
    void Push(const char* name) { Part<QAbstractButton>(window, name)->click(); }

    SampleSlots saved;
    bool writable = true;
    const std::function<bool(const SampleSlots&)> save = [this](const SampleSlots& slots) {
        saved = slots;
        return writable;
    };
    frmSampleEinstellungen window{sampler.Slots(), {layer.Audio(), folder.Path(), save}};
};

TEST_F(frmSampleEinstellungenTest, RowsAreEditedInTheFieldsAndWrittenAtTheEnd) {
    auto* list = Part<QTreeWidget>(window, "ListView1");
    auto* title = Part<QLineEdit>(window, "txtTitel");
    auto* path = Part<QLineEdit>(window, "txtTitelPfad");
    EXPECT_EQ(list->topLevelItemCount(), 10);
    EXPECT_EQ(title->text(), u"Tusch"_s);
    EXPECT_EQ(path->text(), u"/tusch-4"_s);
    window.Choose(u"/m/Neuer Gong.wav"_s);
    EXPECT_EQ(title->text(), u"Neuer Gong.wav"_s) << "the file's name";
    title->clear();
    title->insert(u"Gong"_s); // as typed
    EXPECT_EQ(list->topLevelItem(0)->text(1), u"Gong"_s);
    list->setCurrentItem(list->topLevelItem(9));
    Part<QAction>(window, "SampleLoeschen")->trigger();
    EXPECT_TRUE(path->text().isEmpty());
    list->setCurrentItem(list->topLevelItem(1));
    path->insert(u"/m/"_s + QString(150, u'x'));
    Answers answers({u"ok"_s});
    Q_EMIT path->editingFinished();
    EXPECT_TRUE(path->text().isEmpty()) << "refused, not cut";
    EXPECT_TRUE(answers.Said().value(0).contains(u"Der Pfad ist zu lang"_s));
    window.close();
    EXPECT_EQ(saved[0], (SampleSlot{u"Gong"_s, u"/m/Neuer Gong.wav"_s}));
    EXPECT_EQ(saved[1], SampleSlot());
    EXPECT_EQ(saved[9], SampleSlot());
}

TEST_F(frmSampleEinstellungenTest, AFileIsTestedAndAFailedSaveKeepsTheWindow) {
    writable = false;
    const auto before = fake.streams.size();
    Push("Command2");
    EXPECT_EQ(fake.streams.size(), before + 1);
    EXPECT_EQ(fake.streams.rbegin()->second.activity, audio::Activity::Playing);
    Push("Command3");
    EXPECT_EQ(fake.streams.size(), before);
    window.Choose(u"/broken"_s);
    Answers answers({u"ok"_s, u"Nein"_s, u"Ja"_s});
    Push("Command2");
    EXPECT_EQ(answers.Said().value(0), u"Sampler-Einstellungen|Kann diese Datei nicht wiedergeben!"_s);
    window.close();
    EXPECT_TRUE(window.isVisible());
    window.close();
    EXPECT_FALSE(window.isVisible());
}

} // namespace
} // namespace kalvo::test
