#include "playlists/ui/frmCharts.h"

#include "base/Clock.h"
#include "playlists/PlaylistSupport.h"
#include "support/TestFolder.h"
#include "support/WindowActs.h"
#include "widgets/TextTable.h"

#include <QAction>
#include <QPrinter>
#include <QScrollBar>
#include <gtest/gtest.h>

namespace kalvo::test {

struct frmChartsTest : ::testing::Test {
    void Count(int number, const QDateTime& when) {
        charts.Count(PlaySource::Player1, u"/m/%1.mp3"_s.arg(number), u"T%1"_s.arg(number), u"Wer"_s, when);
    }
    /** Opens the window on so many titles, each played once to three times. */
    void Open(int titles, int limit = 200) {
        for (int number = 0; number < titles; ++number) {
            for (int play = 0; play <= number % 3; ++play)
                Count(number, evening);
        }
        window = std::make_unique<frmCharts>(charts, limit, questions, clock);
        table = window->findChild<TextTable*>();
    }
    void Trigger(const char* action) { window->findChild<QAction*>(QLatin1String(action))->trigger(); }
    /** Presses a button of the question that the action opens; gives its caption and text. */
    QString Answer(const char* action, const QString& button) {
        Answers answers({button});
        Trigger(action);
        EXPECT_TRUE(answers.AllGiven());
        return answers.Said().value(0);
    }
    QString Cell(int row, int column) const { return table->model()->index(row, column).data().toString(); }

    const QDateTime evening{QDate(2026, 11, 21), QTime(20, 0)};
    TestFolder folder;
    SystemClock clock;
    AnsweredQuestions questions;
    ChartsFile charts{folder.Path(u"Charts"_s), clock};
    std::unique_ptr<frmCharts> window;
    TextTable* table = nullptr;
};

TEST_F(frmChartsTest, APlayMovesItsRowAndLeavesTheRest) {
    Open(300, 250);
    EXPECT_EQ(window->windowTitle(), u"Kalvo - Charts  << Titelanzahl: 300 >>  << Titelbegrenzung: 250 >>"_s);
    EXPECT_EQ(Cell(0, 2) + Cell(0, 6) + Cell(249, 6), u"T10131"_s);
    table->resize(400, 200);
    table->selectRow(100);
    table->scrollTo(table->model()->index(120, 0));
    const int place = table->verticalScrollBar()->value();
    const QString selected = Cell(100, 2);
    for (const int number : {299, 297, 999}) { // from the first rows to the top, from below the limit, and a new one
        Count(number, evening.addDays(1));
        window->TakePlay(u"/m/%1.mp3"_s.arg(number), u"T%1"_s.arg(number));
    }
    EXPECT_EQ(table->verticalScrollBar()->value(), place);
    ASSERT_EQ(table->SelectedRows().size(), 1);
    EXPECT_EQ(Cell(table->SelectedRows().front(), 2), selected);
    const auto shown = [this] {
        QStringList cells{window->windowTitle()};
        for (int row = 0; row < table->model()->rowCount(); ++row)
            cells.append(Cell(row, 0) + Cell(row, 2) + Cell(row, 6) + Cell(row, 7));
        return cells;
    };
    const QStringList live = shown();
    window->Reload();
    EXPECT_EQ(live, shown());
}

TEST_F(frmChartsTest, DeletesMarkedTitlesOrAll) {
    Open(4);
    table->selectRow(0);
    Trigger("MarkierteTitelLoeschen");
    EXPECT_EQ(charts.Size(), 3);
    EXPECT_EQ(Answer("AlleTitelLoeschen", u"Nein"_s), u"Löschen|Achtung+++ Die gesamten Charts löschen? +++Achtung"_s);
    EXPECT_EQ(charts.Size(), 3);
    Answer("AlleTitelLoeschen", u"Ja"_s);
    EXPECT_EQ(charts.Size(), 0);
    EXPECT_EQ(table->model()->rowCount(), 0);
}

TEST_F(frmChartsTest, AsksBeforeItPrints) {
    Open(130, 120);
    EXPECT_EQ(Answer("ChartsDrucken", u"Nein"_s),
              u"Charts drucken|Sollen 120 Titel auf 3 Seiten ausgedruckt werden?"_s);
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageSize(QPageSize(QPageSize::A4));
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(folder.Path(u"c.pdf"_s));
    ASSERT_TRUE(window->PrintOn(printer));
    const QByteArray pdf = folder.Read(u"c.pdf"_s);
    EXPECT_TRUE(pdf.startsWith("%PDF"));
    EXPECT_TRUE(pdf.contains("/Count 3")) << "pages";
    ASSERT_TRUE(window->ExportTo(folder.Path(u"c.csv"_s)));
    EXPECT_EQ(folder.Read(u"c.csv"_s).count('\n'), 121);
}

} // namespace kalvo::test
