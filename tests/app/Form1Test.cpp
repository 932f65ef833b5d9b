#include "app/Form1.h"

#include "app/FakeWindow.h"
#include "app/frmHallo.h"
#include "archive/ui/WindowActs.h"
#include "support/WaitUntil.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QSlider>
#include <QTest>
#include <sys/stat.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;
using Form1Test = test::FakeWindow;

TEST_F(Form1Test, TheSplashTellsEachStepInItsOrder) {
    const frmHallo splash(u"1.2.3"_s);
    EXPECT_EQ(In<QLabel>(splash, "lblVersion").text(), u"Version 1.2.3"_s);
    QStringList told;
    QObject::connect(window.get(), &Form1::LoadProgress, [&told](const QString& text) { told.append(text); });
    QObject::connect(window.get(), &Form1::LoadProgress, &splash, &frmHallo::SetProgress);
    ASSERT_TRUE(window->Load());
    ASSERT_TRUE(test::WaitUntil([&told] { return told.last() == u"0 Titel gefunden"_s; }));
    EXPECT_EQ(told,
              (QStringList{u"Grundparameter setzen..."_s, u"Start"_s, u"Skin setzen..."_s, u"Soundkarten suchen..."_s,
                           u"Überblendmodus: Fade-CrossOver"_s, u"Kontinuierliche Wiedergabe"_s,
                           u"Mixerautomatik Aktiv"_s, u"0 Titel im Musikarchiv..."_s, u"0 Titel gefunden"_s}))
        << told.join(u'|').toStdString();
}

TEST_F(Form1Test, TheEndWritesFilesAndKeysInTheirOrder) {
    const auto written = [this](const char* name) {
        struct stat is {};
        EXPECT_EQ(::stat(QFile::encodeName(folder.Path(u"Kalvo/"_s + QLatin1String(name))).constData(), &is), 0)
            << name;
        return std::pair(is.st_mtim.tv_sec, is.st_mtim.tv_nsec);
    };
    ASSERT_TRUE(window->Load());
    desk->list1.Append({{u"a"_s, {}, {}, {}, {}, folder.Write(u"a-60"_s, "x")}});
    test::Answers answers({u"Abbrechen"_s});
    EXPECT_TRUE(window->close());
    EXPECT_EQ(answers.Said(), QStringList{u"Achtung!|Wollen Sie Kalvo wirklich beenden?"_s});
    EXPECT_LE(written("kalvo.dll"), written("kalvo.ini"));
    EXPECT_LE(written("kalvo.ini"), written("Wiedergabeliste/default.mav"));
    EXPECT_EQ(QString::fromLatin1(Read("kalvo.ini")).remove(u'\r').remove(u"\n\n"_s),
              u"[Equalizer]\nLautstärke=100\nPegelabsenkung=50\nMikrofonpegel=80\n[VU Meter]\nStyle=Analyzer\n"
              "[Mixer]\nWlLoeschen=0\nÜberblendgeschwindigkeit=30\nUmschaltzeitpunkt=9\n"_s);
}

TEST_F(Form1Test, TheEqualizerOfTheMenuIsHeardAtOnceAndKept) {
    ASSERT_TRUE(window->Load());
    desk->list1.Append({{u"a"_s, {}, {}, {}, {}, folder.Write(u"a-60"_s, "x")}});
    desk->mixer.Play(1, -1);
    auto& action = In<QAction>(*window, "EQStatus");
    for (const bool on : {true, false}) {
        EXPECT_EQ(action.text(), on ? u"Equalizer aus"_s : u"Equalizer an"_s) << "before";
        action.trigger();
        EXPECT_EQ(action.text(), on ? u"Equalizer an"_s : u"Equalizer aus"_s);
        EXPECT_EQ(action.isChecked(), on);
        EXPECT_EQ(fake->effects, on ? 11 : 0) << "ten bands and the reverb";
        EXPECT_TRUE(Read("kalvo.ini").contains(on ? "EQStatus=1" : "EQStatus=0"));
    }
}

TEST_F(Form1Test, TheEqualizerWindowIsHeardAtOnceAndKeptWhenItCloses) {
    ASSERT_TRUE(window->Load());
    desk->list1.Append({{u"a"_s, {}, {}, {}, {}, folder.Write(u"a-60"_s, "x")}});
    desk->mixer.Play(1, -1);
    In<QAction>(*window, "Equalizer").trigger();
    auto& dialog = In<QDialog>(*window, "frmEqualizer");
    In<QAction>(*window, "EQStatus").trigger();
    EXPECT_TRUE(In<QAbstractButton>(dialog, "EQStatus").isChecked()) << "menu and window tell the same";
    In<QSlider>(dialog, "Band80").setValue(4);
    In<QSlider>(dialog, "Hall").setValue(5);
    EXPECT_EQ(fake->effects, 11) << "changed, not added once more";
    In<QAbstractButton>(dialog, "EQStatus").click();
    EXPECT_EQ(In<QAction>(*window, "EQStatus").text(), u"Equalizer aus"_s);
    EXPECT_EQ(fake->effects, 0);
    dialog.close();
    for (const char* line : {"EQStatus=0", "80=14", "125=10", "Hall=15"})
        EXPECT_TRUE(Read("kalvo.ini").contains(line)) << line;
}

/** Parts that reach out of the widget that holds them; what scrolls may. */
QStringList Clipped(const QWidget& window) {
    QStringList clipped;
    const QList<QWidget*> parts = window.findChildren<QWidget*>();
    for (const QWidget* part : parts) {
        const QWidget* holder = part->parentWidget();
        if (part->isVisible() && !part->isWindow() &&
            !qobject_cast<const QAbstractScrollArea*>(holder->parentWidget()) &&
            !holder->rect().contains(part->geometry()))
            clipped << QLatin1String(part->metaObject()->className()) + u' ' + part->objectName();
    }
    return clipped;
}

TEST_F(Form1Test, IsUsableFromTheSmallestScreenTo4KInEveryFontSize) {
    ASSERT_TRUE(window->Load());
    window->show();
    const auto* const list = &In<QAbstractScrollArea>(*window, "List1");
    const auto* const archive = In<QWidget>(*window, "DataGrid2").parentWidget();
    for (const char* size : {"Schriftgrad_klein", "Schriftgrad_mittel", "Schriftgrad_groß"}) {
        for (const char* buttons : {"Buttongroesse_klein", "Buttongroesse_gross"}) {
            SCOPED_TRACE(std::string(size) + ", " + buttons);
            In<QAction>(*window, size).trigger();
            In<QAction>(*window, buttons).trigger();
            for (const QSize screen : {QSize(3840, 2160), QSize(1280, 800), QSize(800, 600)}) {
                window->resize(screen);
                QApplication::processEvents();
                EXPECT_EQ(window->size(), screen);
                EXPECT_EQ(Clipped(*window), QStringList());
                EXPECT_GE(list->viewport()->height(), 2 * QFontMetrics(list->font()).height());
                EXPECT_GE(archive->height(), 3 * QFontMetrics(list->font()).height());
            }
        }
    }
}

TEST_F(Form1Test, TheFunctionKeysWorkThePlayersWhereverTheFocusIs) {
    ASSERT_TRUE(window->Load());
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    for (const int player : {1, 2})
        desk->List(player).Append({{u"a"_s, {}, {}, {}, {}, folder.Write(u"a-60"_s, "x")}});
    const auto status = [this] { return desk->mixer.StatusText(1) + u' ' + desk->mixer.StatusText(2); };
    In<QWidget>(*window, "cboTempo").setFocus();
    for (const auto& [key, expected] : std::vector<std::pair<Qt::Key, const char*>>{{Qt::Key_F1, "play stop"},
                                                                                    {Qt::Key_F3, "pause stop"},
                                                                                    {Qt::Key_F5, "pause play"},
                                                                                    {Qt::Key_F1, "play play"},
                                                                                    {Qt::Key_F6, "play stop"},
                                                                                    {Qt::Key_F2, "stop stop"}}) {
        QTest::keyClick(window.get(), key);
        EXPECT_EQ(status().toStdString(), expected) << "after F" << key - Qt::Key_F1 + 1;
    }
}

TEST_F(Form1Test, EveryControlHasItsNames) {
    ASSERT_TRUE(window->Load());
    window->show();
    const QList<QWidget*> parts = window->findChildren<QWidget*>();
    for (QWidget* part : parts) {
        if (!part->isVisible() || part->focusPolicy() == Qt::NoFocus || part->focusProxy() != nullptr)
            continue;
        const std::string what = std::string(part->metaObject()->className()) + " " + part->objectName().toStdString();
        EXPECT_FALSE(part->objectName().isEmpty()) << what;
        QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(part);
        ASSERT_TRUE(spoken) << what;
        EXPECT_FALSE(spoken->text(QAccessible::Name).isEmpty()) << what;
    }
}

} // namespace
} // namespace kalvo
