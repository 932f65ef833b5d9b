#include "playlists/ui/frmVerlauf.h"

#include "playlists/AnsweredQuestions.h"
#include "playlists/ui/frmWLEigenschaften.h"
#include "playlists/ui/frmZuletztCount.h"
#include "support/TestFolder.h"
#include "support/WaitUntil.h"
#include "widgets/TextTable.h"

#include <QComboBox>
#include <QLabel>
#include <gtest/gtest.h>

namespace kalvo {

namespace {

QString Cell(const QWidget& window, int row, int column) {
    return window.findChild<TextTable*>()->model()->index(row, column).data().toString();
}

} // namespace

TEST(frmVerlaufTest, ShowsAndExportsAnEvening) {
    const test::TestFolder folder;
    test::AnsweredQuestions questions;
    EveningLog log(folder.Path(QStringLiteral("Verlauf")));
    const auto play = [&log](int day, const char* name, PlayOrigin origin) {
        PlayedTitle title{QDateTime(QDate(2026, 11, day), QTime(20, 1, 2)),
                          origin,
                          1,
                          QStringLiteral("Wer"),
                          QString::fromLatin1(name),
                          200,
                          190,
                          {}};
        ASSERT_TRUE(log.Write(title));
    };
    play(20, "alt", PlayOrigin::Player);
    play(21, "neu", PlayOrigin::Automatic);
    frmVerlauf window(log, questions);
    auto* evenings = window.findChild<QComboBox*>();
    ASSERT_EQ(evenings->count(), 2);
    EXPECT_EQ(evenings->currentText(), QStringLiteral("Samstag, 21. November 2026"));
    EXPECT_EQ(Cell(window, 0, 0) + Cell(window, 0, 1) + Cell(window, 0, 4) + Cell(window, 0, 6),
              QStringLiteral("20:01:02Automatikneu03:10"));
    EXPECT_EQ(window.findChild<QLabel*>(QStringLiteral("Label1"))->text(),
              QStringLiteral("1 Titel, 00:03:10 gespielt"));
    evenings->setCurrentIndex(1);
    play(22, "noch neuer", PlayOrigin::Player);
    window.Reload();
    EXPECT_EQ(Cell(window, 0, 4), QStringLiteral("alt")) << "the chosen evening stays";
    ASSERT_TRUE(window.ExportTo(folder.Path(QStringLiteral("a.txt"))));
    ASSERT_TRUE(window.ExportTo(folder.Path(QStringLiteral("a.csv"))));
    EXPECT_TRUE(folder.Read(QStringLiteral("a.txt")).startsWith("Gespielte Titel am 20.11.2026"));
    EXPECT_TRUE(folder.Read(QStringLiteral("a.csv")).contains(";Player;1;Wer;alt;03:20;03:10;"));
}

TEST(frmZuletztCountTest, ShowsCountsAndShares) {
    frmZuletztCount window;
    window.Show({1, 2, 0, 0, 5});
    EXPECT_EQ(Cell(window, 0, 0) + Cell(window, 0, 1) + Cell(window, 0, 2), QStringLiteral("heute112,5 %"));
    EXPECT_EQ(Cell(window, 4, 0) + Cell(window, 4, 1), QStringLiteral("noch nie5"));
    window.Show({});
    EXPECT_EQ(Cell(window, 0, 2), QStringLiteral("0,0 %"));
}

TEST(frmWLEigenschaftenTest, AddsUpTitlesTimeAndSize) {
    const test::TestFolder folder;
    SystemRandom random;
    Playlist list(2, random);
    const auto add = [&list](const char* duration, const QString& path) {
        list.Append({{QStringLiteral("a"), {}, QString::fromLatin1(duration), {}, {}, path}});
    };
    add("59:59", folder.Write(QStringLiteral("a"), QByteArray(1024 * 1024, 'x')));
    add("61", folder.Write(QStringLiteral("b"), QByteArray(512 * 1024, 'x')));
    add("0", folder.Path(QStringLiteral("fehlt")));
    auto* window = new frmWLEigenschaften(list, QStringLiteral("Party"));
    const auto text = [window](const char* name) {
        return window->findChild<QLabel*>(QString::fromLatin1(name))->text();
    };
    EXPECT_TRUE(test::WaitUntil([&] { return text("Label3") == QStringLiteral("1,5 MB"); }));
    EXPECT_EQ(text("Label1"), QStringLiteral("3"));
    EXPECT_EQ(text("Label2"), QStringLiteral("01:01:00 (1 Titel ohne Angabe)"));
    EXPECT_EQ(text("Label4"), QStringLiteral("1"));
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Eigenschaften Wiedergabeliste 2 - Party"));
    window->close();
}

} // namespace kalvo
