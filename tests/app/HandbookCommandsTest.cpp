#include "app/HandbookCommands.h"

#include "app/DeskActions.h"
#include "app/FakeWindow.h"
#include "app/ShortcutList.h"
#include "app/frmOptionen.h"

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

struct HandbookCommandsTest : ::testing::Test {
    HandbookCommandsTest() {
        actions.BuildMenus(*window.menuBar());
        for (const char* page : {"index", "fenster/frmsuchen", "fenster/optionsoundpage", "fenster/guestpanel"})
            folder.Write(u"handbuch/"_s + QLatin1String(page) + u".html"_s, "<html>");
        commands = new HandbookCommands(actions, window, Handbook(folder.Path(u"bin"_s)), [this](const QUrl& url) {
            opened.append(QDir(folder.Path(u"handbuch"_s)).relativeFilePath(url.toLocalFile()));
            return hasBrowser;
        });
    }
    /** Presses F12 as the desktop does: asked for first. Whether the window wants it for itself. */
    static bool Press(QWidget& focus) {
        QKeyEvent asked(QEvent::ShortcutOverride, Qt::Key_F12, Qt::NoModifier);
        asked.ignore();
        QApplication::sendEvent(&focus, &asked);
        QKeyEvent pressed(QEvent::KeyPress, Qt::Key_F12, Qt::NoModifier);
        QApplication::sendEvent(&focus, &pressed);
        return asked.isAccepted();
    }

    test::TestFolder folder;
    QMainWindow window;
    DeskActions actions;
    HandbookCommands* commands = nullptr;
    QStringList opened;
    bool hasBrowser = true;
};

TEST_F(HandbookCommandsTest, TheMenuOpensTheFirstPageOrAMessageTellsWhereItIs) {
    auto& help = *commands->findChild<QAction*>(u"Handbuch"_s);
    EXPECT_EQ(help.shortcut(), QKeySequence(Qt::Key_F12));
    help.trigger();
    EXPECT_EQ(opened, QStringList{u"index.html"_s});
    hasBrowser = false;
    for (const QString& told : {u"handbuch/index.html"_s, u"handbuch"_s}) {
        test::Answers answers({u"OK"_s});
        help.trigger();
        EXPECT_TRUE(answers.Said().value(0).contains(folder.Path(told)));
        QFile::remove(folder.Path(u"handbuch/index.html"_s)); // is not installed at all
    }
    EXPECT_EQ(opened.size(), 2) << "without a browser, but not without a handbook";
}

TEST_F(HandbookCommandsTest, AWindowOpensItsOwnPageAndAnUnknownOneTheFirst) {
    QDialog known;
    known.setObjectName(u"frmSuchen"_s);
    auto* field = new QLineEdit(&known);
    auto* panel = new QWidget(&known);
    panel->setObjectName(u"GuestPanel"_s);
    auto* button = new QPushButton(panel);
    QDialog unknown;
    EXPECT_TRUE(Press(*field));
    EXPECT_TRUE(Press(*button));
    EXPECT_TRUE(Press(unknown));
    EXPECT_EQ(opened, (QStringList{u"fenster/frmsuchen.html"_s, u"fenster/guestpanel.html"_s, u"index.html"_s}));
    EXPECT_FALSE(Press(window)) << "there the menu has the key";
    EXPECT_EQ(opened.size(), 3);
    frmOptionen options(OptionValues(), {u"Kein Ton"_s});
    auto* list = options.findChild<QListWidget*>(u"lstSeiten"_s);
    list->setCurrentRow(1);
    Press(*list);
    EXPECT_EQ(opened.constLast(), u"fenster/optionsoundpage.html"_s) << "the shown page, wherever the focus is";
}

/** The handbook's tables of keys: tasten.csv of the menus, bedienteile.csv of what stands in no menu. */
struct KeyTableTest : test::FakeWindow {
    static QString German(QString key) {
        const std::pair<const char16_t*, const char16_t*> words[] = {
            {u"Ctrl", u"Strg"}, {u"Shift", u"Umschalt"}, {u"Return", u"Eingabe"},
            {u"Left", u"←"},    {u"Right", u"→"},        {u"Del", u"Entf"},
            {u"Up", u"↑"},      {u"Down", u"↓"},         {u"Space", u"Leertaste"}};
        for (const auto& [from, to] : words)
            key.replace(QString::fromUtf16(from), QString::fromUtf16(to));
        return key;
    }
    static QString Table(const QList<ShortcutEntry>& entries) {
        QString table;
        for (const ShortcutEntry& entry : entries) {
            QStringList keys = entry.keys.split(u", "_s);
            for (QString& key : keys)
                key = u":kbd:`"_s + German(key) + u'`';
            table += u"\"%1\",\"%2\",\"%3\"\n"_s.arg(entry.place, entry.command, keys.join(u", "_s));
        }
        return table;
    }
    static void Compare(const char* name, const QString& table) {
        QFile file(qEnvironmentVariable("KALVO_SOURCE") + u"/docs/handbuch/"_s + QLatin1String(name));
        const bool writes = qEnvironmentVariableIsSet("KALVO_WRITE_KEYS");
        ASSERT_TRUE(file.open(writes ? QIODevice::ReadWrite | QIODevice::Truncate : QIODevice::ReadOnly));
        if (writes)
            file.write(table.toUtf8());
        file.seek(0);
        EXPECT_EQ(QString::fromUtf8(file.readAll()), table)
            << "write it anew: KALVO_WRITE_KEYS=1 test_app --gtest_filter='KeyTable*'";
    }
};

TEST_F(KeyTableTest, TheHandbooksKeysAreThoseOfTheProgram) {
    ASSERT_TRUE(window->Load());
    const QList<ShortcutEntry> ofMenus = ShortcutsOfMenus(*window->menuBar());
    EXPECT_GT(ofMenus.size(), 30);
    Compare("tasten.csv", Table(ofMenus));
    Compare("bedienteile.csv", Table(ShortcutsOfControls()));
}

} // namespace
} // namespace kalvo
