#include "app/FakeWindow.h"
#include "archive/ui/WindowActs.h"
#include "live/JingleFile.h"
#include "live/SampleFile.h"
#include "live/ui/frmSample.h"
#include "support/WaitUntil.h"

#include <QLineEdit>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

/** The main window with samples on pads 4 and 5, and one title that plays. */
struct LiveCommandsTest : test::FakeWindow {
    void SetUp() override {
        SampleSlots slots;
        slots[3] = {u"Tusch"_s, u"/tusch-4"_s};
        slots[4] = {u"Gong"_s, u"/gong-4"_s};
        SampleFile(Path("\\sample.dll"), desk->clock).Write(slots);
    }
    void Show() {
        ASSERT_TRUE(window->Load());
        window->show();
        QApplication::setActiveWindow(window.get());
        ASSERT_TRUE(test::WaitUntil([this] { return fake->streams.size() == 2; })) << "the samples are opened ahead";
        desk->list1.Append({{u"a"_s, {}, {}, {}, {}, folder.Write(u"a-60"_s, "x")}});
        desk->mixer.Play(1, -1);
        list = window->findChild<QWidget*>(u"List1"_s);
        list->setFocus();
    }
    QString Path(const char* name) const { return desk->folder.Path(QLatin1String(name)); }
    /** The sample that sounds. */
    QString Sounding() const {
        for (const auto& [handle, stream] : fake->streams) {
            if (stream.activity == audio::Activity::Playing && stream.path.size() < 10)
                return QString::fromStdString(stream.path);
        }
        return {};
    }
    static void Key(QWidget& widget, QEvent::Type type, int key, bool repeat = false) {
        QKeyEvent event(type, key, Qt::KeypadModifier, {}, repeat);
        QApplication::sendEvent(&widget, &event);
    }

    QWidget* list = nullptr;
};

TEST_F(LiveCommandsTest, TheKeypadFiresPadsWhereNoTextIsTyped) {
    Show();
    Key(*list, QEvent::KeyPress, Qt::Key_4);
    EXPECT_EQ(Sounding(), u"/tusch-4"_s) << "the pad window need not be open";
    Key(*list, QEvent::KeyRelease, Qt::Key_4, true);
    Key(*list, QEvent::KeyPress, Qt::Key_4, true);
    EXPECT_EQ(Sounding(), u"/tusch-4"_s);
    Key(*list, QEvent::KeyPress, Qt::Key_Clear); // 5 without NumLock
    EXPECT_EQ(Sounding(), u"/gong-4"_s);
    Key(*list, QEvent::KeyRelease, Qt::Key_4);
    EXPECT_EQ(Sounding(), u"/gong-4"_s);
    Key(*list, QEvent::KeyRelease, Qt::Key_5);
    EXPECT_EQ(Sounding(), QString()) << "NumLock was switched meanwhile";
    auto& search = In<QLineEdit>(*window, "Text1");
    search.setFocus();
    Key(search, QEvent::KeyPress, Qt::Key_4);
    EXPECT_EQ(Sounding(), QString());
}

TEST_F(LiveCommandsTest, LosingTheFocusReleasesAHeldPad) {
    Show();
    Key(*list, QEvent::KeyPress, Qt::Key_4);
    In<QLineEdit>(*window, "Text1").setFocus();
    EXPECT_EQ(Sounding(), QString()) << "into a text field";
    list->setFocus();
    Key(*list, QEvent::KeyPress, Qt::Key_4);
    ASSERT_EQ(Sounding(), u"/tusch-4"_s);
    QWidget other;
    other.show();
    QApplication::setActiveWindow(&other);
    EXPECT_EQ(Sounding(), QString()) << "to another window";
    Key(*list, QEvent::KeyPress, Qt::Key_4);
    EXPECT_EQ(Sounding(), QString());
    In<QAction>(*window, "Sampler").trigger();
    auto& pads = In<QWidget>(*window, "frmSample");
    QApplication::setActiveWindow(&pads);
    Key(pads, QEvent::KeyPress, Qt::Key_5);
    EXPECT_EQ(Sounding(), u"/gong-4"_s) << "the pad window takes the keys too";
    window.reset();
    EXPECT_EQ(frmSample::StoredReduction(desk->settings), 50);
}

TEST_F(LiveCommandsTest, AScheduledFileShowsItsCaptionAndTheDefaultOneAfterwards) {
    {
        JingleFile file(Path("\\TerminPlayNeu.dll"), desk->settings, desk->clock);
        JingleRecords records = file.Read();
        records[0].path = u"/glocke-5"_s;
        records[1].path = u"/broken"_s;
        for (JingleRecord* record : {&records[0], &records[1]}) {
            const QDateTime now = desk->clock.Now();
            record->active = true;
            // This minute and the next: the test may begin at the end of one.
            record->slots[0] = {JingleSlot::Daily(), {}, now.toString(u"HH:mm"_s)};
            record->slots[1] = {JingleSlot::Daily(), {}, now.addSecs(60).toString(u"HH:mm"_s)};
        }
        ASSERT_TRUE(file.Write(records));
    }
    Show();
    EXPECT_EQ(window->windowTitle(), u"Kalvo [der mixer made in germany]"_s);
    ASSERT_TRUE(test::WaitUntil([this] { return window->windowTitle() == u"Täglicher Termin Play: /glocke-5"_s; }));
    auto* box = window->findChild<xMessageBox*>();
    ASSERT_TRUE(test::WaitUntil([&] { return (box = window->findChild<xMessageBox*>()) != nullptr; }));
    EXPECT_EQ(box->findChild<QWidget*>(u"lblText"_s)->property("text"), u"Kann diese Datei nicht wiedergeben!"_s);
    EXPECT_FALSE(box->isModal()) << "the show goes on";
    EXPECT_TRUE(In<QWidget>(*window, "frmJingleAnzeige").isVisible());
    fake->Advance(6);
    ASSERT_TRUE(test::WaitUntil([this] { return window->windowTitle() == u"Kalvo [der mixer made in germany]"_s; }));
    EXPECT_FALSE(In<QWidget>(*window, "frmJingleAnzeige").isVisible());
}

} // namespace
} // namespace kalvo
