#include "live/ui/frmAutoDj.h"
#include "archive/CategoryLists.h"
#include "archive/TestClock.h"
#include "live/AutoDjRefill.h"
#include "live/FakeTitles.h"
#include "live/ui/ValueView.h"
#include "playlists/PlaylistSupport.h"
#include "support/PartOf.h"
#include "support/TestFolder.h"
#include "support/WaitUntil.h"
#include "support/WindowActs.h"

#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <gtest/gtest.h>

namespace kalvo::test {

struct frmAutoDjTest : ::testing::Test, ListDesk {
    frmAutoDjTest() {
        for (const ArchiveField field : CategoryLists::kFields)
            CategoryLists::Write(data, field, {u"Rock "_s, {}, u"Disco"_s, u"Rock"_s, u"Polka"_s, u"Popmusik"_s});
        source.AddNumbered(u"A"_s, 20, u"Disco"_s);
        QObject::connect(&window, &frmAutoDj::ListsWanted, &window, [this] { ++listsWanted; });
    }
    /** Opens the window with a value of a field chosen. */
    void Start(ArchiveField field, const QString& value) {
        store.last.field = field;
        store.last.values = {value};
        window.Start();
    }
    void Push(const char* name) { Part<QAbstractButton>(window, name)->click(); }
    bool IsChecked(const char* name) { return Part<QAbstractButton>(window, name)->isChecked(); }
    void Choose(const char* list, int row) {
        auto* view = Part<ValueView>(window, list);
        view->setCurrentIndex(view->model()->index(row, 0));
    }
    /** Of one of the lists, one behind the other. */
    QString Values(const char* list) { return Part<ValueView>(window, list)->Values().join(u' '); }
    /** Presses and gives the text of the message that follows, after closing it. */
    QString ToldAfter(const char* button) {
        Answers answers({u"OK"_s});
        Push(button);
        EXPECT_TRUE(WaitUntil([&answers] { return !answers.Said().isEmpty(); }));
        return answers.Said().value(0);
    }

    TestFolder folder;
    DataFolder data{folder.Path()};
    TestClock clock;
    FakeTitles source;
    AutoDjStore store{folder.Path(u"AutoDJ.json"_s)};
    AutoDjRefill refill{{&first, &second}, source, random, clock};
    frmAutoDj window{{data, source, random, actions, clock, store, refill}};
    int listsWanted = 0;
};

TEST_F(frmAutoDjTest, ValuesMoveBetweenTheListsAndEveryCriterionKeepsItsChoice) {
    window.Start();
    window.show();
    Push("optStil1");
    EXPECT_EQ(Values("List1"), u"Disco Polka Popmusik Rock"_s) << "trimmed, sorted and there once";
    auto* search = Part<QLineEdit>(window, "txtSuche");
    search->setText(u"po"_s);
    PressKey(*search, Qt::Key_Return, Qt::NoModifier, u"\r"_s);
    EXPECT_EQ(Values("LstAuswahl1"), u"Polka"_s) << "Enter chooses";
    EXPECT_TRUE(Part<QAbstractButton>(window, "Command1")->text().contains(u"Füllen"_s)) << "and fills nothing";
    EXPECT_EQ(Both(), "|");
    Push("Command4");
    EXPECT_EQ(Values("LstAuswahl1"), u"Polka Popmusik"_s);
    search->clear();
    EXPECT_EQ(Values("List1"), u"Disco Rock"_s);
    Choose("List1", 1);
    Push("Command3");
    Choose("LstAuswahl1", 0);
    Push("Command5");
    EXPECT_EQ(Values("LstAuswahl1"), u"Popmusik Rock"_s);
    Push("optKommentar1");
    EXPECT_EQ(Values("LstAuswahl1"), QString());
    Push("optStil1");
    EXPECT_EQ(Values("LstAuswahl1"), u"Popmusik Rock"_s);
    Push("Command6");
    EXPECT_EQ(Values("LstAuswahl1"), QString());
    EXPECT_EQ(listsWanted, 0);
}

TEST_F(frmAutoDjTest, FillsAndTellsThePlayingTimeOrWhyItDoesNot) {
    Start(ArchiveField::Stil, u"Disco"_s);
    auto* hours = Part<QLineEdit>(window, "Text1");
    hours->setText(u"0,5"_s);
    EXPECT_TRUE(ToldAfter("Command1").endsWith(u"Gesamtspielzeit von: 00:35:00 der Wiedergabeliste hinzugefügt"_s));
    EXPECT_EQ(first.Count(), 7);
    hours->setText(u"viel"_s);
    EXPECT_TRUE(ToldAfter("Command1").contains(u"Gesamtspielzeit in Stunden"_s));
    hours->setText(u"5"_s);
    Push("optBeideWiedergabelisten");
    Push("Command6");
    EXPECT_TRUE(ToldAfter("Command1").contains(u"zuerst Werte"_s));
    Choose("List1", 3);
    Push("Command3");
    EXPECT_TRUE(ToldAfter("Command1").contains(u"keinen Titel"_s)) << "of this style";
    EXPECT_EQ(first.Count() + second.Count(), 7);
}

TEST_F(frmAutoDjTest, ASavedSelectionComesBack) {
    store.last.rules = {3, true, false};
    Start(ArchiveField::Album, u"Rock"_s);
    auto* names = Part<QComboBox>(window, "cmbAuswahl");
    names->setEditText(u"Abend"_s);
    Push("cmdAuswahlSpeichern");
    Push("optStil1");
    Push("chkInterpretAbstand");
    names->setCurrentIndex(0);
    Q_EMIT names->activated(0);
    EXPECT_EQ(Values("LstAuswahl1"), u"Rock"_s);
    EXPECT_TRUE(IsChecked("optAlbum1") && IsChecked("chkInterpretAbstand"));
    AutoDjStore again(folder.Path(u"AutoDJ.json"_s));
    again.Load(clock);
    ASSERT_TRUE(again.Find(u"abend"_s));
    EXPECT_EQ(again.Find(u"abend"_s)->rules.artistDistance, 3);
}

TEST_F(frmAutoDjTest, RefillingGoesOnWhenTheWindowIsClosed) {
    Start(ArchiveField::Stil, u"Disco"_s);
    int normalViews = 0;
    QObject::connect(&window, &frmAutoDj::NormalViewWanted, &window, [&normalViews] { ++normalViews; });
    window.show();
    Push("chkNachfuellen");
    Push("Command2");
    EXPECT_EQ(normalViews, 1);
    EXPECT_TRUE(WaitUntil([this] { return first.Count() == 3; }));
    Push("chkNachfuellen");
    EXPECT_FALSE(refill.Options().isOn);
}

TEST_F(frmAutoDjTest, MissingListsAreAskedFor) {
    QFile::remove(folder.Path(u"Stil"_s));
    window.Start();
    Push("optStil1");
    EXPECT_EQ(listsWanted, 1);
    CategoryLists::Write(data, ArchiveField::Stil, {u"Walzer"_s});
    window.ReloadValues();
    EXPECT_EQ(Values("List1"), u"Walzer"_s);
    Push("Command7");
    EXPECT_EQ(listsWanted, 2);
}

} // namespace kalvo::test
