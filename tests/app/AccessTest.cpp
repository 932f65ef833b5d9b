#include "app/FakeWindow.h"
#include "app/ShortcutList.h"
#include "support/WaitUntil.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QMenuBar>
#include <QTest>

#include <map>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

/** The main window with a title in the archive, which is the chosen one. */
struct AccessTest : test::FakeWindow {
    void SetUp() override {
        ASSERT_TRUE(window->Load());
        ASSERT_TRUE(test::WaitUntil([this] { return desk->archive.IsIndexReady(); }));
        TitleRecord title;
        title.Titel = u"Lied"_s;
        title.Interpret = u"Anna"_s;
        title.Pfad = folder.Write(u"lied-60.mp3"_s, "x");
        ASSERT_TRUE(desk->archive.AddTitle(title));
        desk->archive.Refresh();
        window->resize(1600, 1000);
        window->show();
        In<QAbstractButton>(*window, "cmdErsteSchritteSchliessen").click();
        auto& grid = In<QAbstractItemView>(*window, "DataGrid2");
        grid.setCurrentIndex(grid.model()->index(0, 0));
    }
};

TEST_F(AccessTest, TooltipsNameTheShortcutOfTheMenu) {
    for (const auto& [control, keys] : std::map<const char*, const char*>{
             {"cmdPlay1", "F1"}, {"Command4", "Alt+2"}, {"cmdAnfang2", "Shift+F5"}, {"cmdListe1", "Ctrl+1"}})
        EXPECT_TRUE(In<QWidget>(*window, control).toolTip().endsWith(u'(' + QLatin1String(keys) + u')'))
            << In<QWidget>(*window, control).toolTip().toStdString();
}

TEST_F(AccessTest, NoShortcutMeansTwoThings) {
    std::map<QString, QString> owners;
    for (const QAction* action : window->findChildren<QAction*>()) {
        if (action->shortcutContext() == Qt::WidgetWithChildrenShortcut)
            continue;
        for (const QKeySequence& keys : action->shortcuts()) {
            const auto [owner, isNew] = owners.emplace(keys.toString(), action->objectName());
            EXPECT_TRUE(isNew) << keys.toString().toStdString() << ": " << owner->second.toStdString() << " and "
                               << action->objectName().toStdString();
            const int key = keys[0].key();
            EXPECT_TRUE((key >= Qt::Key_F1 && key <= Qt::Key_F35) || keys[0].keyboardModifiers() != Qt::NoModifier)
                << "would act while text is typed: " << keys.toString().toStdString();
        }
    }
    EXPECT_GT(owners.size(), 40U);
}

TEST_F(AccessTest, KeysDoWhatTheMouseDoes) {
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    auto& fader = In<QAbstractSlider>(*window, "SFader");
    auto& volume = In<QAbstractSlider>(*window, "hscroll1");
    volume.setValue(50);
    In<QAction>(*window, "Lauter").trigger();
    EXPECT_EQ(volume.value(), 55);
    In<QAction>(*window, "ReglerNachLinks").trigger();
    EXPECT_EQ(fader.value(), -10);
    In<QAction>(*window, "GeheZuRegler").trigger();
    EXPECT_EQ(QApplication::focusWidget(), &fader);
    QTest::keyClick(&fader, Qt::Key_0);
    EXPECT_EQ(fader.value(), 0);
    In<QAction>(*window, "GeheZuListe2").trigger();
    EXPECT_EQ(QApplication::focusWidget(), &In<QWidget>(*window, "List2"));
    auto& tree = In<QWidget>(*window, "TreeView1");
    EXPECT_FALSE(tree.isVisible());
    In<QAction>(*window, "Kategorien").trigger();
    EXPECT_TRUE(tree.isVisible());
}

TEST_F(AccessTest, TheBandsDividersAreFoundAndMovedByKeys) {
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    auto& divider = In<QAction>(*window, "GeheZuTeiler");
    auto& upper = In<QWidget>(*window, "TeilerPlayer");
    divider.trigger();
    ASSERT_EQ(window->focusWidget(), &upper);
    const int place = upper.y();
    QTest::keyClick(&upper, Qt::Key_Down);
    EXPECT_GT(upper.y(), place);
    divider.trigger();
    EXPECT_EQ(window->focusWidget()->objectName(), u"TeilerListen"_s);
    In<QAction>(*window, "Kategorien").trigger();
    auto& inner = In<QWidget>(*window, "TeilerKategorien");
    ASSERT_TRUE(test::WaitUntil([&inner] { return inner.isVisible(); }));
    divider.trigger();
    EXPECT_EQ(window->focusWidget(), &inner);
    divider.trigger();
    EXPECT_EQ(window->focusWidget(), &upper) << "from the start again";
}

TEST_F(AccessTest, TabGoesThroughTheWindowAsItIsRead) {
    QStringList order;
    const QWidget* const first = &In<QWidget>(*window, "cmdAnfang1");
    const QWidget* part = first;
    do {
        if (part->isVisible() && (part->focusPolicy() & Qt::TabFocus) && !part->objectName().isEmpty())
            order.append(part->objectName());
        part = part->nextInFocusChain();
    } while (part != first);
    const QStringList landmarks{u"cmdAnfang1"_s, u"cmdPlay1"_s, u"SFader"_s,    u"cmdPlay2"_s,  u"List1"_s,
                                u"List2"_s,      u"Text1"_s,    u"DataGrid2"_s, u"cmdListe1"_s, u"Label5"_s};
    qsizetype last = -1;
    for (const QString& landmark : landmarks) {
        EXPECT_GT(order.indexOf(landmark), last) << landmark.toStdString() << " in " << order.join(u' ').toStdString();
        last = order.indexOf(landmark);
    }
}

TEST_F(AccessTest, TheListOfKeysIsMadeOfTheMenusAndFindsPartsOfWords) {
    const QList<ShortcutEntry> all = ShortcutsOfMenus(*window->menuBar());
    EXPECT_TRUE(all.contains({u"Mixer › Player 2"_s, u"Stop"_s, u"F6"_s}));
    EXPECT_TRUE(all.contains({u"Bearbeiten"_s, u"Schnellsuche"_s, u"Strg+F"_s})) << "named behind a tab";
    for (const auto& [needle, count] : std::map<const char*, qsizetype>{{"F6", 1}, {"player STOP f6", 1}, {"xyz", 0}}) {
        const QList<ShortcutEntry> found = MatchingShortcuts(all, QString::fromLatin1(needle));
        EXPECT_EQ(found.size(), count) << needle;
    }
    EXPECT_EQ(MatchingShortcuts(all, {}), all);
    In<QAction>(*window, "Tastenuebersicht").trigger();
    auto& list = In<QDialog>(*window, "frmTasten");
    In<QLineEdit>(list, "txtSuche").setText(u"sampler leertaste"_s);
    EXPECT_EQ(In<QAbstractItemView>(list, "lstTasten").model()->rowCount(), 1);
}

} // namespace
} // namespace kalvo
