#include "live/ui/frmAutoDj.h"
#include "archive/CategoryLists.h"
#include "archive/TestClock.h"
#include "live/AutoDjRefill.h"
#include "live/FakeTitles.h"
#include "live/ui/ValueView.h"
#include "playlists/AnsweredQuestions.h"
#include "playlists/PlaylistActions.h"
#include "playlists/PlaylistSupport.h"
#include "support/TestFolder.h"
#include "support/WaitUntil.h"

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <gtest/gtest.h>

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;

class frmAutoDjTest : public ::testing::Test {
protected:
    frmAutoDjTest() {
        for (const ArchiveField field : CategoryLists::kFields)
            CategoryLists::Write(data, field, {u"Rock"_s, u"Disco"_s, u"Polka"_s, u"Popmusik"_s});
        for (int i = 0; i < 20; ++i)
            source.Add(u"A"_s, QString::number(i), u"Disco"_s);
        QObject::connect(&window, &frmAutoDj::ListsWanted, &window, [this] { ++listsWanted; });
    }
    template<typename Part>
    Part* Find(const char* name) {
        return window.findChild<Part*>(QLatin1String(name));
    }
    void Click(const char* name) { Find<QAbstractButton>(name)->click(); }
    QStringList Values(const char* list) { return Find<ValueView>(list)->Values(); }
    /** Presses and gives the text of the message that follows, after closing it. */
    QString ToldAfter(const char* button) {
        QString text;
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, &look, [&text] {
            if (QWidget* box = QApplication::activeModalWidget()) {
                for (const QLabel* label : box->findChildren<QLabel*>())
                    text += label->text();
                box->close();
            }
        });
        look.start(5);
        Click(button);
        WaitUntil([&text] { return !text.isEmpty(); });
        return text;
    }

    TestFolder folder;
    DataFolder data{folder.Path()};
    TestClock clock;
    SystemRandom random;
    FakeTitles source;
    Playlist first{1, random};
    Playlist second{2, random};
    AnsweredQuestions questions;
    PlaylistActions actions{first, second, questions};
    AutoDjStore store{folder.Path(u"AutoDJ.json"_s)};
    AutoDjRefill refill{{&first, &second}, source, random, clock};
    frmAutoDj window{{data, source, random, actions, clock, store, refill}};
    int listsWanted = 0;
};

TEST_F(frmAutoDjTest, ValuesMoveBetweenTheListsAndEveryCriterionKeepsItsChoice) {
    window.Start();
    Click("optStil1");
    EXPECT_EQ(Find<QLabel>("lblKriterium1")->text(), u"Stil"_s);
    EXPECT_EQ(Values("List1"), QStringList({u"Disco"_s, u"Polka"_s, u"Popmusik"_s, u"Rock"_s}));
    Find<QLineEdit>("txtSuche")->setText(u"po"_s);
    Click("Command4");
    EXPECT_EQ(Values("LstAuswahl1"), QStringList({u"Polka"_s, u"Popmusik"_s}));
    Find<QLineEdit>("txtSuche")->clear();
    EXPECT_EQ(Values("List1"), QStringList({u"Disco"_s, u"Rock"_s}));
    Find<ValueView>("List1")->setCurrentIndex(Find<ValueView>("List1")->model()->index(1, 0));
    Click("Command3");
    Find<ValueView>("LstAuswahl1")->setCurrentIndex(Find<ValueView>("LstAuswahl1")->model()->index(0, 0));
    Click("Command5");
    EXPECT_EQ(Values("LstAuswahl1"), QStringList({u"Popmusik"_s, u"Rock"_s}));
    Click("optKommentar1");
    EXPECT_EQ(Values("LstAuswahl1"), QStringList());
    Click("optStil1");
    EXPECT_EQ(Values("LstAuswahl1"), QStringList({u"Popmusik"_s, u"Rock"_s}));
    Click("Command6");
    EXPECT_EQ(Values("LstAuswahl1"), QStringList());
    EXPECT_EQ(listsWanted, 0);
}

TEST_F(frmAutoDjTest, EnterInTheSearchChoosesAndFillsNothing) {
    window.Start();
    window.show();
    Click("optStil1");
    auto* search = Find<QLineEdit>("txtSuche");
    search->setText(u"po"_s);
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, u"\r"_s);
    QApplication::sendEvent(search, &enter);
    EXPECT_EQ(Values("LstAuswahl1"), QStringList({u"Polka"_s}));
    EXPECT_TRUE(Find<QAbstractButton>("Command1")->text().contains(u"Füllen"_s)) << "does not run";
    EXPECT_EQ(first.Entries().size() + second.Entries().size(), 0);
}

TEST_F(frmAutoDjTest, FillsAndTellsThePlayingTime) {
    store.last.field = ArchiveField::Stil;
    store.last.values = {u"Disco"_s};
    window.Start();
    Find<QLineEdit>("Text1")->setText(u"0,5"_s);
    EXPECT_EQ(ToldAfter("Command1"),
              u"Titel mit einer Gesamtspielzeit von: 00:35:00 der Wiedergabeliste hinzugefügt"_s);
    EXPECT_EQ(first.Count(), 7);
    Find<QLineEdit>("Text1")->setText(u"viel"_s);
    EXPECT_TRUE(ToldAfter("Command1").contains(u"Gesamtspielzeit in Stunden"_s));
    Find<QLineEdit>("Text1")->setText(u"5"_s);
    Find<QAbstractButton>("optBeideWiedergabelisten")->click();
    Click("Command6");
    EXPECT_TRUE(ToldAfter("Command1").contains(u"zuerst Werte"_s));
    EXPECT_EQ(first.Count() + second.Count(), 7);
}

TEST_F(frmAutoDjTest, NothingThatMatchesIsTold) {
    store.last.field = ArchiveField::Stil;
    store.last.values = {u"Rock"_s};
    window.Start();
    EXPECT_TRUE(ToldAfter("Command1").contains(u"keinen Titel"_s));
    EXPECT_EQ(first.Count(), 0);
}

TEST_F(frmAutoDjTest, ASavedSelectionComesBack) {
    store.last.field = ArchiveField::Album;
    store.last.values = {u"Rock"_s};
    store.last.rules = {3, true, false};
    window.Start();
    auto* names = Find<QComboBox>("cmbAuswahl");
    names->setEditText(u"Abend"_s);
    Click("cmdAuswahlSpeichern");
    Click("optStil1");
    Click("chkInterpretAbstand");
    names->setCurrentIndex(0);
    Q_EMIT names->activated(0);
    EXPECT_EQ(Values("LstAuswahl1"), QStringList(u"Rock"_s));
    EXPECT_TRUE(Find<QAbstractButton>("optAlbum1")->isChecked());
    EXPECT_TRUE(Find<QAbstractButton>("chkInterpretAbstand")->isChecked());
    AutoDjStore again(folder.Path(u"AutoDJ.json"_s));
    again.Load(clock);
    ASSERT_TRUE(again.Find(u"abend"_s));
    EXPECT_EQ(again.Find(u"abend"_s)->rules.artistDistance, 3);
}

TEST_F(frmAutoDjTest, RefillingGoesOnWhenTheWindowIsClosed) {
    store.last.field = ArchiveField::Stil;
    store.last.values = {u"Disco"_s};
    window.Start();
    int normalViews = 0;
    QObject::connect(&window, &frmAutoDj::NormalViewWanted, &window, [&normalViews] { ++normalViews; });
    window.show();
    Click("chkNachfuellen");
    Click("Command2");
    EXPECT_EQ(normalViews, 1);
    EXPECT_TRUE(WaitUntil([this] { return first.Count() == 3; }));
    Click("chkNachfuellen");
    EXPECT_FALSE(refill.Options().isOn);
}

TEST_F(frmAutoDjTest, MissingListsAreAskedFor) {
    QFile::remove(folder.Path(u"Stil"_s));
    window.Start();
    Click("optStil1");
    EXPECT_EQ(listsWanted, 1);
    CategoryLists::Write(data, ArchiveField::Stil, {u"Walzer"_s});
    window.ReloadValues();
    EXPECT_EQ(Values("List1"), QStringList(u"Walzer"_s));
    Click("Command7");
    EXPECT_EQ(listsWanted, 2);
}

} // namespace
} // namespace kalvo::test
