#include "app/FakeWindow.h"

#include <QTest>

#include <map>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

/** The main window with a title in the archive, which is the chosen one. */
struct AccessTest : test::FakeWindow {
    void SetUp() override {
        Show();
        window->resize(1600, 1000);
        AddTitle(Title(u"Anna"_s, u"Lied"_s, folder.Write(u"lied-60.mp3"_s, "x")));
        In<QAbstractButton>("cmdErsteSchritteSchliessen").click();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }
};

TEST_F(AccessTest, NoShortcutMeansTwoThings) {
    std::map<QString, QString> owners;
    for (const QAction* action : window->findChildren<QAction*>()) {
        if (action->shortcutContext() == Qt::WidgetWithChildrenShortcut)
            continue;
        for (const QKeySequence& keys : action->shortcuts()) {
            SCOPED_TRACE((keys.toString() + u' ' + action->objectName()).toStdString());
            const auto [owner, isNew] = owners.emplace(keys.toString(), action->objectName());
            EXPECT_TRUE(isNew) << owner->second.toStdString();
            const int key = keys[0].key();
            EXPECT_TRUE((key >= Qt::Key_F1 && key <= Qt::Key_F35) || keys[0].keyboardModifiers() != Qt::NoModifier)
                << "would act while text is typed";
        }
    }
    EXPECT_GT(owners.size(), 40U);
}

TEST_F(AccessTest, KeysDoWhatTheMouseDoes) {
    auto& fader = In<QAbstractSlider>("SFader");
    auto& volume = In<QAbstractSlider>("hscroll1");
    volume.setValue(50);
    Trigger("Lauter");
    EXPECT_EQ(volume.value(), 55);
    Trigger("ReglerNachLinks");
    EXPECT_EQ(fader.value(), -10);
    Trigger("GeheZuRegler");
    EXPECT_EQ(QApplication::focusWidget(), &fader);
    QTest::keyClick(&fader, Qt::Key_0);
    EXPECT_EQ(fader.value(), 0);
    Trigger("GeheZuListe2");
    EXPECT_EQ(QApplication::focusWidget(), &In("List2"));
    auto& tree = In("TreeView1");
    EXPECT_FALSE(tree.isVisible());
    Trigger("Kategorien");
    EXPECT_TRUE(tree.isVisible());
}

TEST_F(AccessTest, TheBandsDividersAreFoundAndMovedByKeys) {
    auto& divider = In<QAction>("GeheZuTeiler");
    auto& upper = In("TeilerPlayer");
    divider.trigger();
    ASSERT_EQ(window->focusWidget(), &upper);
    const int place = upper.y();
    QTest::keyClick(&upper, Qt::Key_Down);
    EXPECT_GT(upper.y(), place);
    divider.trigger();
    EXPECT_EQ(window->focusWidget()->objectName(), u"TeilerListen"_s);
    Trigger("Kategorien");
    auto& inner = In("TeilerKategorien");
    ASSERT_TRUE(test::WaitUntil([&inner] { return inner.isVisible(); }));
    divider.trigger();
    EXPECT_EQ(window->focusWidget(), &inner);
    divider.trigger();
    EXPECT_EQ(window->focusWidget(), &upper) << "from the start again";
}

TEST_F(AccessTest, WindowsOpenOnceAndLeaveTheDeskFree) {
    for (const auto& [action, name] : std::map<const char*, QString>{{"Suchen", u"frmSuchen"_s},
                                                                     {"Doubletten", u"frmDoubletten"_s},
                                                                     {"Mitschnitt", u"frmMitschnitt"_s},
                                                                     {"Sampler", u"frmSample"_s},
                                                                     {"Equalizer", u"frmEqualizer"_s},
                                                                     {"MeineCharts", u"frmCharts"_s},
                                                                     {"Wunschzettel", u"frmWunschzettel"_s}}) {
        Trigger(action);
        Trigger(action);
        const QList<QDialog*> windows = window->findChildren<QDialog*>(name);
        ASSERT_EQ(windows.size(), 1) << action;
        EXPECT_TRUE(windows.front()->isVisible() && !windows.front()->isModal()) << action;
    }
}

TEST_F(AccessTest, TheListOfKeysFindsPartsOfWords) {
    Trigger("Tastenuebersicht");
    auto& list = In<QDialog>("frmTasten");
    In<QLineEdit>(list, "txtSuche").setText(u"sampler leertaste"_s);
    EXPECT_EQ(In<QAbstractItemView>(list, "lstTasten").model()->rowCount(), 1);
}

} // namespace
} // namespace kalvo
