#include "playlists/ui/frmVerlauf.h"

#include "playlists/PlaylistSupport.h"
#include "playlists/ui/frmWLEigenschaften.h"
#include "support/TestFolder.h"
#include "support/WaitUntil.h"
#include "widgets/TextTable.h"

#include <QComboBox>
#include <QLabel>
#include <gtest/gtest.h>

namespace kalvo::test {
namespace {

/** Some cells of a row, one behind the other. */
QString Cells(const QWidget& window, int row, const QList<int>& columns) {
    QString text;
    for (const int column : columns)
        text += window.findChild<TextTable*>()->model()->index(row, column).data().toString();
    return text;
}

TEST(frmVerlaufTest, ShowsAndExportsAnEvening) {
    const TestFolder folder;
    AnsweredQuestions questions;
    EveningLog log(folder.Path(u"Verlauf"_s));
    const auto play = [&log](int day, const QString& name, PlayOrigin origin) {
        const QDateTime start(QDate(2026, 11, day), QTime(20, 1, 2));
        ASSERT_TRUE(log.Write({start, origin, 1, u"Wer"_s, name, 200, 190, {}}));
    };
    play(20, u"alt"_s, PlayOrigin::Player);
    play(21, u"neu"_s, PlayOrigin::Automatic);
    frmVerlauf window(log, questions);
    auto* evenings = window.findChild<QComboBox*>();
    ASSERT_EQ(evenings->count(), 2);
    EXPECT_EQ(evenings->currentText(), u"Samstag, 21. November 2026"_s);
    EXPECT_EQ(Cells(window, 0, {0, 1, 4, 6}), u"20:01:02Automatikneu03:10"_s);
    EXPECT_EQ(window.findChild<QLabel*>(u"Label1"_s)->text(), u"1 Titel, 00:03:10 gespielt"_s);
    evenings->setCurrentIndex(1);
    play(22, u"noch neuer"_s, PlayOrigin::Player);
    window.Reload();
    EXPECT_EQ(Cells(window, 0, {4}), u"alt"_s) << "the chosen evening stays";
    ASSERT_TRUE(window.ExportTo(folder.Path(u"a.txt"_s)) && window.ExportTo(folder.Path(u"a.csv"_s)));
    EXPECT_TRUE(folder.Read(u"a.txt"_s).startsWith("Gespielte Titel am 20.11.2026"));
    EXPECT_TRUE(folder.Read(u"a.csv"_s).contains(";Player;1;Wer;alt;03:20;03:10;"));
}

TEST(frmWLEigenschaftenTest, AddsUpTitlesTimeAndSize) {
    const TestFolder folder;
    TwoLists lists;
    const auto add = [&lists](const QString& duration, const QString& path) {
        lists.second.Append({{u"a"_s, {}, duration, {}, {}, path}});
    };
    add(u"59:59"_s, folder.Write(u"a"_s, QByteArray(1024 * 1024, 'x')));
    add(u"61"_s, folder.Write(u"b"_s, QByteArray(512 * 1024, 'x')));
    add(u"0"_s, folder.Path(u"fehlt"_s));
    auto* window = new frmWLEigenschaften(lists.second, u"Party"_s);
    const auto text = [window](const QString& name) { return window->findChild<QLabel*>(name)->text(); };
    EXPECT_TRUE(WaitUntil([&] { return text(u"Label3"_s) == u"1,5 MB"_s; }));
    EXPECT_EQ(text(u"Label1"_s), u"3"_s);
    EXPECT_EQ(text(u"Label2"_s), u"01:01:00 (1 Titel ohne Angabe)"_s);
    EXPECT_EQ(text(u"Label4"_s), u"1"_s);
    EXPECT_EQ(window->windowTitle(), u"Eigenschaften Wiedergabeliste 2 - Party"_s);
    window->close();
}

} // namespace
} // namespace kalvo::test
