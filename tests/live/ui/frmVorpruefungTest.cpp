#include "live/ui/frmVorpruefung.h"

#include "base/Clock.h"
#include "live/PreshowCheck.h"
#include "live/TitleInspector.h"
#include "support/PartOf.h"
#include "support/TestFolder.h"
#include "support/WaitUntil.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <gtest/gtest.h>

namespace kalvo::test {

using namespace Qt::StringLiterals;

/** One title whose file is missing, and no output. */
struct frmVorpruefungTest : ::testing::Test {
    frmVorpruefungTest() {
        PlaylistEntry entry{u"Wach"_s, {}, {}, {}, {}, folder.Path(u"wach.mp3"_s)};
        entry.id = 7;
        facts.lists[1].append({2, entry});
        facts.headphones = {0, {}};
        page.show();
    }
    void Check() {
        Part<QPushButton>(page, "cmdPruefen")->click();
        ASSERT_TRUE(WaitUntil([this] { return !check.IsRunning(); }));
    }
    QTreeWidgetItem* Line(const QString& where) const {
        return lines->findItems(where, Qt::MatchExactly | Qt::MatchRecursive, 0).value(0);
    }

    TestFolder folder;
    SystemClock clock;
    PreshowFacts facts;
    TitleInspector inspector{folder.Path(u"Vorpruefung.db"_s), clock};
    PreshowCheck check{[this] { return facts; }, inspector};
    frmVorpruefung page{check, clock};
    QTreeWidget* lines = Part<QTreeWidget>(page, "Befunde");
    const QString missing = u"Liste 2, 3. Wach"_s;
};

TEST_F(frmVorpruefungTest, ShowsWhatIsWrongByItsWeightAndLeadsThere) {
    QList<PreshowTarget> chosen;
    QObject::connect(&page, &frmVorpruefung::TargetChosen, &page,
                     [&chosen](const PreshowTarget& target) { chosen.append(target); });
    Check();
    EXPECT_TRUE(Part<QLabel>(page, "lblUrteil")->text().startsWith(u"2 Fehler, "_s));
    ASSERT_GE(lines->topLevelItemCount(), 2);
    EXPECT_EQ(lines->topLevelItem(0)->text(0), u"Fehler"_s);
    EXPECT_EQ(lines->topLevelItem(1)->text(0), u"Hinweise"_s);
    ASSERT_NE(Line(missing), nullptr);
    Q_EMIT lines->itemActivated(Line(missing), 0);
    Q_EMIT lines->itemActivated(lines->topLevelItem(0), 0);
    EXPECT_EQ(chosen, (QList<PreshowTarget>{{PreshowTarget::Place::Entry, 2, 7, {}}})) << "a heading leads nowhere";
    Part<QPushButton>(page, "cmdKopieren")->click();
    EXPECT_TRUE(QApplication::clipboard()->text().contains(u"- Liste 2, 3. Wach: Die Datei fehlt: "_s));
}

/** A header asked to stretch a column does so later: here only while the window goes. */
TEST_F(frmVorpruefungTest, GoesWhileItIsShown) {
    Check();
    lines->header()->setSectionResizeMode(1, QHeaderView::Interactive);
    lines->header()->resizeSection(1, 10);
    lines->header()->setSectionResizeMode(1, QHeaderView::Stretch);
    EXPECT_TRUE(page.isVisible());
}

} // namespace kalvo::test
