#include "archive/ui/frmSuchen.h"

#include "archive/ui/ArchiveDesk.h"
#include "archive/ui/ArchivePanel.h"
#include "archive/ui/WindowActs.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>

namespace kalvo {
namespace {

using test::ArchiveDesk;

class frmSuchenTest : public ::testing::Test {
protected:
    void SetUp() override {
        desk_.Add(QStringLiteral("ABBA"), QStringLiteral("Waterloo"), QStringLiteral("Gold"));
        desk_.Add(QStringLiteral("Juno"), QStringLiteral("Der Abbau"), QStringLiteral("Abba gold"));
        desk_.Add(QStringLiteral("Zoo"), QStringLiteral("Männer"));
        desk_.archive.Refresh();
        panel_.resize(900, 300);
        panel_.show();
        dialog_.show();
    }

    template<typename Widget>
    Widget& Find(const char* name) {
        auto* found = dialog_.findChild<Widget*>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }
    QString Text(const char* label) { return Find<QLabel>(label).text(); }
    void Press(const char* button) { Find<QAbstractButton>(button).click(); }
    void Tick(const char* box, bool on = true) { Find<QCheckBox>(box).setChecked(on); }
    void Write(const QString& text) { Find<QLineEdit>("Text1").setText(text); }
    QString Current() { return panel_.CurrentRecord().Interpret; }

    ArchiveDesk desk_;
    ArchivePanel panel_{desk_.archive, desk_.settings, desk_.data};
    frmSuchen dialog_{desk_.archive, panel_};
};

TEST_F(frmSuchenTest, EachBoxSearchesItsFieldAlone) {
    struct Case {
        const char* box;
        QString condition;
        QString count;
    };
    const Case cases[] = {{"Check2", QStringLiteral("Interpret"), QStringLiteral("1 Titel gefunden")},
                          {"Check1", QStringLiteral("Titel"), QStringLiteral("1 Titel gefunden")},
                          {"Check4", QStringLiteral("Album"), QStringLiteral("1 Titel gefunden")},
                          {"Check5", QStringLiteral("Bewertung"), QStringLiteral("0 Titel gefunden")},
                          {"Check6", QStringLiteral("Stil"), QStringLiteral("0 Titel gefunden")},
                          {"Check7", QStringLiteral("extra1"), QStringLiteral("0 Titel gefunden")}};
    Write(QStringLiteral("abba"));
    for (const Case& c : cases) {
        Tick(c.box);
        Press("Command2");
        EXPECT_EQ(
            desk_.archive.CurrentRecordSource(),
            QStringLiteral("SELECT * FROM Daten  WHERE %1 Like '*abba*'Order By Interpret, Titel").arg(c.condition));
        EXPECT_EQ(Text("lblTitelAnzahl"), c.count) << c.box;
        int ticked = 0;
        for (const char* box : {"Check1", "Check2", "Check4", "Check5", "Check6", "Check7"})
            ticked += Find<QCheckBox>(box).isChecked() ? 1 : 0;
        EXPECT_EQ(ticked, 1);
    }
}

TEST_F(frmSuchenTest, WithoutATextOrABoxNothingHappens) {
    const QString before = desk_.archive.CurrentRecordSource();
    Press("Command2");
    Write(QStringLiteral("abba"));
    Tick("Check1", false);
    Press("Command2");
    EXPECT_EQ(desk_.archive.CurrentRecordSource(), before);
    EXPECT_EQ(Text("lblTitelAnzahl"), QString());
}

TEST_F(frmSuchenTest, StepsGoFromHitToHitAndAnApostropheBreaksNothing) {
    Tick("Check3");
    Write(QStringLiteral("ABBA"));
    Press("Command2");
    EXPECT_EQ(Current(), QStringLiteral("ABBA"));
    Press("Command3");
    EXPECT_EQ(Current(), QStringLiteral("Juno"));
    Press("Command2");
    EXPECT_EQ(Current(), QStringLiteral("ABBA")) << "from the first row again";
    Write(QStringLiteral("o - mä"));
    Press("Command2");
    EXPECT_EQ(Current(), QStringLiteral("Zoo")) << "artist and title together, without case";
    Tick("Check3", false);
    Tick("Check2");
    Write(QStringLiteral("j'o"));
    Press("Command2");
    EXPECT_EQ(Text("lblTitelAnzahl"), QStringLiteral("1 Titel gefunden"));
}

TEST_F(frmSuchenTest, StepsWithoutAHitTellAndEndOnTheFirstRow) {
    panel_.GoToRow(2);
    Tick("Check3");
    Write(QStringLiteral("xyz"));
    test::Answers answers({QStringLiteral("OK")});
    Press("Command2");
    EXPECT_EQ(answers.Said().value(0).section(u'|', 1), QStringLiteral("Nicht's gefunden"));
    EXPECT_EQ(panel_.CurrentRow(), 0);
    EXPECT_TRUE(Find<QAbstractButton>("Command2").isEnabled());
}

TEST_F(frmSuchenTest, TheArrowsGoThroughTheFoundTitles) {
    panel_.GoToRow(0);
    EXPECT_EQ(Text("lblTitel"), QStringLiteral("ABBA - Waterloo"));
    EXPECT_FALSE(Find<QAbstractButton>("Command4").isEnabled());
    Press("Command5");
    EXPECT_EQ(Text("lblTitel"), QStringLiteral("Juno - Der Abbau"));
    Press("Command5");
    EXPECT_FALSE(Find<QAbstractButton>("Command5").isEnabled());
    Press("Command4");
    EXPECT_EQ(Current(), QStringLiteral("Juno"));
}

} // namespace
} // namespace kalvo
