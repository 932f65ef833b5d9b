#include "archive/ui/frmSuchen.h"

#include "archive/ui/ArchivePanel.h"
#include "archive/ui/ArchiveWindowTest.h"

#include <QCheckBox>
#include <QLineEdit>

namespace kalvo::test {
namespace {

class frmSuchenTest : public ArchiveWindowTest {
protected:
    frmSuchenTest() {
        Add(u"ABBA"_s, u"Waterloo"_s, u"Gold"_s);
        Add(u"Juno"_s, u"Der Abbau"_s, u"Abba gold"_s);
        Add(u"Zoo"_s, u"Männer"_s);
        archive.Refresh();
        panel_.resize(900, 300);
        panel_.show();
        dialog_.show();
    }
    QWidget& Window() override { return dialog_; }

    void Tick(const char* box, bool on = true) { Find<QCheckBox>(box).setChecked(on); }
    void SearchFor(const QString& text) {
        Find<QLineEdit>("Text1").setText(text);
        Press("Command2");
    }
    QString Current() { return panel_.CurrentRecord().Interpret; }

    ArchivePanel panel_{archive, settings, data};
    frmSuchen dialog_{archive, panel_};
};

TEST_F(frmSuchenTest, EachBoxSearchesItsFieldAlone) {
    const QString before = archive.CurrentRecordSource();
    Press("Command2");
    Tick("Check1", false);
    SearchFor(u"abba"_s);
    EXPECT_EQ(archive.CurrentRecordSource(), before) << "neither without a text nor without a box";
    const struct {
        const char* box;
        QString field;
        int titles;
    } cases[] = {{"Check2", u"Interpret"_s, 1}, {"Check1", u"Titel"_s, 1}, {"Check4", u"Album"_s, 1},
                 {"Check5", u"Bewertung"_s, 0}, {"Check6", u"Stil"_s, 0},  {"Check7", u"extra1"_s, 0}};
    for (const auto& c : cases) {
        Tick(c.box);
        SearchFor(u"abba"_s);
        EXPECT_EQ(archive.CurrentRecordSource(),
                  u"SELECT * FROM Daten  WHERE %1 Like '*abba*'Order By Interpret, Titel"_s.arg(c.field));
        EXPECT_EQ(Text("lblTitelAnzahl"), u"%1 Titel gefunden"_s.arg(c.titles)) << c.box;
        for (const auto& other : cases)
            EXPECT_EQ(Find<QCheckBox>(other.box).isChecked(), other.box == c.box) << c.box;
    }
}

TEST_F(frmSuchenTest, StepsGoFromHitToHitAndAnApostropheBreaksNothing) {
    Tick("Check3");
    SearchFor(u"ABBA"_s);
    EXPECT_EQ(Current(), u"ABBA"_s);
    Press("Command3");
    EXPECT_EQ(Current(), u"Juno"_s);
    Press("Command2");
    EXPECT_EQ(Current(), u"ABBA"_s) << "from the first row again";
    SearchFor(u"o - mä"_s);
    EXPECT_EQ(Current(), u"Zoo"_s) << "artist and title together, without case";
    Tick("Check3", false);
    Tick("Check2");
    SearchFor(u"j'o"_s);
    EXPECT_EQ(Text("lblTitelAnzahl"), u"1 Titel gefunden"_s);
}

TEST_F(frmSuchenTest, StepsWithoutAHitTellAndEndOnTheFirstRow) {
    panel_.GoToRow(2);
    Tick("Check3");
    Answers answers({u"OK"_s});
    SearchFor(u"xyz"_s);
    EXPECT_EQ(answers.Said().value(0).section(u'|', 1), u"Nicht's gefunden"_s);
    EXPECT_EQ(panel_.CurrentRow(), 0);
    EXPECT_TRUE(Find<QAbstractButton>("Command2").isEnabled());
}

TEST_F(frmSuchenTest, TheArrowsGoThroughTheFoundTitles) {
    panel_.GoToRow(0);
    EXPECT_EQ(Text("lblTitel"), u"ABBA - Waterloo"_s);
    EXPECT_FALSE(Find<QAbstractButton>("Command4").isEnabled());
    Press("Command5");
    EXPECT_EQ(Text("lblTitel"), u"Juno - Der Abbau"_s);
    Press("Command5");
    EXPECT_FALSE(Find<QAbstractButton>("Command5").isEnabled());
    Press("Command4");
    EXPECT_EQ(Current(), u"Juno"_s);
}

} // namespace
} // namespace kalvo::test
