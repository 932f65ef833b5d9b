#include "live/ui/frmVorpruefung.h"

#include "base/Clock.h"
#include "live/PreshowCheck.h"
#include "live/TitleInspector.h"
#include "support/TestFolder.h"
#include "support/WaitUntil.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

/** One title whose file is missing, and no output. */
struct frmVorpruefungTest : ::testing::Test {
    frmVorpruefungTest() {
        PlaylistEntry entry;
        entry.title = u"Wach"_s;
        entry.path = folder.Path(u"wach.mp3"_s);
        entry.id = 7;
        facts.lists[1].append({2, entry});
        facts.headphones = {0, {}};
        page.show();
    }
    void Check() {
        page.findChild<QPushButton*>(u"cmdPruefen"_s)->click();
        ASSERT_TRUE(test::WaitUntil([this] { return !check.IsRunning(); }));
    }
    QTreeWidgetItem* Line(const QString& where) const {
        const auto found = lines->findItems(where, Qt::MatchExactly | Qt::MatchRecursive, 0);
        return found.value(0);
    }
    QString Verdict() const { return page.findChild<QLabel*>(u"lblUrteil"_s)->text(); }

    test::TestFolder folder;
    SystemClock clock;
    PreshowFacts facts;
    TitleInspector inspector{folder.Path(u"Vorpruefung.db"_s), clock};
    PreshowCheck check{[this] { return facts; }, inspector};
    frmVorpruefung page{check, clock};
    QTreeWidget* lines = page.findChild<QTreeWidget*>(u"Befunde"_s);
};

TEST_F(frmVorpruefungTest, ShowsWhatIsWrongByItsWeightAndLeadsThere) {
    QList<PreshowTarget> chosen;
    QObject::connect(&page, &frmVorpruefung::TargetChosen, &page,
                     [&chosen](const PreshowTarget& target) { chosen.append(target); });
    Check();
    EXPECT_TRUE(Verdict().startsWith(u"2 Fehler, "_s)) << Verdict().toStdString();
    ASSERT_GE(lines->topLevelItemCount(), 2);
    EXPECT_EQ(lines->topLevelItem(0)->text(0), u"Fehler"_s);
    EXPECT_EQ(lines->topLevelItem(1)->text(0), u"Hinweise"_s);
    QTreeWidgetItem* title = Line(u"Liste 2, 3. Wach"_s);
    ASSERT_NE(title, nullptr);
    Q_EMIT lines->itemActivated(title, 0);
    Q_EMIT lines->itemActivated(lines->topLevelItem(0), 0);
    EXPECT_EQ(chosen, (QList<PreshowTarget>{{PreshowTarget::Place::Entry, 2, 7, {}}})) << "a heading leads nowhere";
    page.findChild<QPushButton*>(u"cmdKopieren"_s)->click();
    EXPECT_TRUE(QApplication::clipboard()->text().contains(u"- Liste 2, 3. Wach: Die Datei fehlt: "_s));
}

TEST_F(frmVorpruefungTest, TheChosenLineStaysChosenWhenTheListChanges) {
    Check();
    lines->setCurrentItem(Line(u"Liste 2, 3. Wach"_s));
    facts.mixing.continuous = false;
    Check();
    ASSERT_NE(Line(u"Stillstandswache"_s), nullptr);
    ASSERT_NE(lines->currentItem(), nullptr);
    EXPECT_EQ(lines->currentItem()->text(0), u"Liste 2, 3. Wach"_s);
    facts.lists = {};
    Check();
    EXPECT_EQ(Line(u"Liste 2, 3. Wach"_s), nullptr);
}

/** A header asked to stretch a column does so later: here only while the window goes. */
TEST_F(frmVorpruefungTest, GoesWhileItIsShown) {
    Check();
    lines->header()->setSectionResizeMode(1, QHeaderView::Interactive);
    lines->header()->resizeSection(1, 10);
    lines->header()->setSectionResizeMode(1, QHeaderView::Stretch);
    EXPECT_TRUE(page.isVisible());
}

} // namespace
} // namespace kalvo
