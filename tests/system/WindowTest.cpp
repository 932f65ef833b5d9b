#include "app/Desk.h"
#include "app/Form1.h"
#include "playback/AudioModule.h"
#include "support/SoundMaker.h"
#include "support/TestFolder.h"
#include "widgets/IconButton.h"

#include <QAbstractScrollArea>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QTest>
#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;

/** The main window on the device without sound. */
struct WindowTest : ::testing::Test {
    WindowTest() {
        CommandLine line;
        line.device = audio::kNoSound;
        window = std::make_unique<Form1>(desk, line);
    }

    void Choose(const char* action) {
        auto* const found = window->findChild<QAction*>(QString::fromUtf8(action));
        ASSERT_TRUE(found) << action;
        found->trigger();
    }

    TestFolder folder;
    AudioModule module{qEnvironmentVariable("KALVO_BIN")};
    Desk desk{DataFolder(folder.Path(u"Kalvo"_s)), module.Create()};
    std::unique_ptr<Form1> window;
};

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

TEST_F(WindowTest, IsUsableFromTheSmallestScreenTo4KInEveryFontSize) {
    ASSERT_TRUE(window->Load());
    window->show();
    const auto* const list = window->findChild<QAbstractScrollArea*>(u"List1"_s);
    const auto* const archive = window->findChild<QWidget*>(u"DataGrid2"_s)->parentWidget();
    for (const char* size : {"Schriftgrad_klein", "Schriftgrad_mittel", "Schriftgrad_groß"}) {
        for (const char* buttons : {"Buttongroesse_klein", "Buttongroesse_gross"}) {
            SCOPED_TRACE(std::string(size) + ", " + buttons);
            Choose(size);
            Choose(buttons);
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

TEST_F(WindowTest, TheFunctionKeysWorkThePlayersWhereverTheFocusIs) {
    ASSERT_TRUE(window->Load());
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    for (const int player : {1, 2}) {
        PlaylistEntry entry;
        entry.path = MakeSound(folder.Path(), QStringLiteral("Titel %1.wav").arg(player), {60});
        desk.List(player).Append({entry});
    }
    const auto status = [this] { return desk.mixer.StatusText(1) + u' ' + desk.mixer.StatusText(2); };
    window->findChild<QWidget*>(QStringLiteral("cboTempo"))->setFocus();
    for (const auto& [key, expected] : std::vector<std::pair<Qt::Key, const char*>>{{Qt::Key_F1, "play stop"},
                                                                                    {Qt::Key_F3, "pause stop"},
                                                                                    {Qt::Key_F5, "pause play"},
                                                                                    {Qt::Key_F1, "play play"},
                                                                                    {Qt::Key_F7, "play pause"},
                                                                                    {Qt::Key_F2, "stop pause"},
                                                                                    {Qt::Key_F6, "stop stop"}}) {
        QTest::keyClick(window.get(), key);
        EXPECT_EQ(status().toStdString(), expected) << "after F" << key - Qt::Key_F1 + 1;
    }
}

TEST_F(WindowTest, EveryControlHasItsNames) {
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
} // namespace kalvo::test
