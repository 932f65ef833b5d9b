#include "app/FakeWindow.h"
#include "live/JingleFile.h"
#include "live/SampleFile.h"
#include "live/ui/frmSample.h"

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
    void Play() {
        Show();
        QApplication::setActiveWindow(window.get());
        ASSERT_TRUE(test::WaitUntil([this] { return fake->streams.size() == 2; })) << "the samples are opened ahead";
        Append(1, {"a-60"});
        desk->mixer.Play(1, -1);
        list = &In("List1");
        list->setFocus();
    }
    QString Path(const char* name) const { return desk->folder.Path(QLatin1String(name)); }
    /** The sample that sounds. */
    QString Sounding() const {
        for (const auto& [handle, stream] : fake->streams)
            if (stream.activity == audio::Activity::Playing && stream.path.size() < 10)
                return QString::fromStdString(stream.path);
        return {};
    }
    static void Key(QWidget& widget, QEvent::Type type, int key, bool repeat = false) {
        QKeyEvent event(type, key, Qt::KeypadModifier, {}, repeat);
        QApplication::sendEvent(&widget, &event);
    }

    QWidget* list = nullptr;
};

TEST_F(LiveCommandsTest, TheKeypadFiresPadsWhereNoTextIsTyped) {
    Play();
    const struct {
        QEvent::Type type;
        int key;
        bool repeat;
        QString sounds;
        const char* what;
    } steps[] = {{QEvent::KeyPress, Qt::Key_4, false, u"/tusch-4"_s, "the pad window need not be open"},
                 {QEvent::KeyRelease, Qt::Key_4, true, u"/tusch-4"_s, "held"},
                 {QEvent::KeyPress, Qt::Key_4, true, u"/tusch-4"_s, "held"},
                 {QEvent::KeyPress, Qt::Key_Clear, false, u"/gong-4"_s, "5 without NumLock"},
                 {QEvent::KeyRelease, Qt::Key_4, false, u"/gong-4"_s, "the one before"},
                 {QEvent::KeyRelease, Qt::Key_5, false, {}, "NumLock was switched meanwhile"}};
    for (const auto& step : steps) {
        Key(*list, step.type, step.key, step.repeat);
        EXPECT_EQ(Sounding(), step.sounds) << step.what;
    }
    auto& search = In("Text1");
    search.setFocus();
    Key(search, QEvent::KeyPress, Qt::Key_4);
    EXPECT_EQ(Sounding(), QString());
}

TEST_F(LiveCommandsTest, LosingTheFocusReleasesAHeldPad) {
    Play();
    Key(*list, QEvent::KeyPress, Qt::Key_4);
    In("Text1").setFocus();
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
    Trigger("Sampler");
    auto& pads = In("frmSample");
    QApplication::setActiveWindow(&pads);
    Key(pads, QEvent::KeyPress, Qt::Key_5);
    EXPECT_EQ(Sounding(), u"/gong-4"_s) << "the pad window takes the keys too";
    window.reset();
    EXPECT_EQ(frmSample::StoredReduction(desk->settings), 50);
}

TEST_F(LiveCommandsTest, AScheduledFileShowsItsCaptionAndTheDefaultOneAfterwards) {
    JingleFile file(Path("\\TerminPlayNeu.dll"), desk->settings, desk->clock);
    JingleRecords records = file.Read();
    records[0].path = u"/glocke-5"_s;
    records[1].path = u"/broken"_s;
    for (JingleRecord* record : {&records[0], &records[1]}) {
        record->active = true;
        for (const unsigned minute : {0U, 1U}) // this one and the next: the test may begin at the end of one
            record->slots[minute] = {
                JingleSlot::Daily(), {}, desk->clock.Now().addSecs(60 * minute).toString(u"HH:mm"_s)};
    }
    ASSERT_TRUE(file.Write(records));
    Play();
    const QString usual = u"Kalvo [der mixer made in germany]"_s;
    EXPECT_EQ(window->windowTitle(), usual);
    ASSERT_TRUE(test::WaitUntil([this] { return window->windowTitle() == u"Täglicher Termin Play: /glocke-5"_s; }));
    xMessageBox* box = nullptr;
    ASSERT_TRUE(test::WaitUntil([&] { return (box = window->findChild<xMessageBox*>()) != nullptr; }));
    EXPECT_EQ(box->findChild<QWidget*>(u"lblText"_s)->property("text"), u"Kann diese Datei nicht wiedergeben!"_s);
    EXPECT_FALSE(box->isModal()) << "the show goes on";
    EXPECT_TRUE(In("frmJingleAnzeige").isVisible());
    fake->Advance(6);
    ASSERT_TRUE(test::WaitUntil([&] { return window->windowTitle() == usual; }));
    EXPECT_FALSE(In("frmJingleAnzeige").isVisible());
}

} // namespace
} // namespace kalvo
