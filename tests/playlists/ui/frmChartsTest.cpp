#include "playlists/ui/frmCharts.h"

#include "base/Clock.h"
#include "playlists/AnsweredQuestions.h"
#include "support/TestFolder.h"
#include "widgets/TextTable.h"
#include "widgets/xMessageBox.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QPrinter>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>
#include <gtest/gtest.h>

namespace kalvo {

namespace {

class frmChartsTest : public ::testing::Test {
protected:
    void Fill(int titles) {
        for (int number = 0; number < titles; ++number) {
            for (int play = 0; play <= number % 3; ++play)
                charts.Count(PlaySource::Player1, QStringLiteral("/m/%1.mp3").arg(number),
                             QStringLiteral("T%1").arg(number), QStringLiteral("Wer"),
                             QDateTime(QDate(2026, 11, 21), QTime(20, 0)));
        }
    }
    /** Presses a button of the question that the action opens; gives its caption and text. */
    QString Answer(const char* action, const QString& button) {
        QString asked;
        QTimer::singleShot(0, [&asked, button] {
            auto* box = qobject_cast<xMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            asked = box->windowTitle() + u'|' + box->findChild<QLabel*>(QStringLiteral("lblText"))->text();
            for (QPushButton* one : box->findChildren<QPushButton*>()) {
                if (one->text() == button)
                    one->click();
            }
        });
        Action(action)->trigger();
        return asked;
    }
    QAction* Action(const char* name) { return window->findChild<QAction*>(QString::fromLatin1(name)); }
    void Open(int limit = 200) {
        window = std::make_unique<frmCharts>(charts, limit, questions, clock);
        table = window->findChild<TextTable*>();
    }
    QString Cell(int row, int column) const { return table->model()->index(row, column).data().toString(); }

    test::TestFolder folder;
    SystemClock clock;
    test::AnsweredQuestions questions;
    ChartsFile charts{folder.Path(QStringLiteral("Charts")), clock};
    std::unique_ptr<frmCharts> window;
    TextTable* table = nullptr;
};

} // namespace

TEST_F(frmChartsTest, ShowsTheRanking) {
    Fill(5);
    Open(4);
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Kalvo - Charts  << Titelanzahl: 5 >>  << Titelbegrenzung: 4 >>"));
    QStringList headers;
    for (int column = 0; column < table->model()->columnCount(); ++column)
        headers.append(table->model()->headerData(column, Qt::Horizontal).toString());
    EXPECT_EQ(headers.join(u'|'),
              QStringLiteral("Platz|Interpret|Titel|Player1|Player2|Archiv|Gesamt|Zuletzt Gespielt"));
    EXPECT_EQ(table->model()->rowCount(), 4);
    EXPECT_EQ(Cell(0, 2) + Cell(0, 6) + Cell(3, 2), QStringLiteral("T23T0"));
}

TEST_F(frmChartsTest, APlayMovesItsRowAndLeavesTheRest) {
    Fill(300);
    Open(250);
    table->resize(400, 200);
    table->selectRow(100);
    table->scrollTo(table->model()->index(120, 0));
    const int place = table->verticalScrollBar()->value();
    const QString selected = Cell(100, 2);
    const auto play = [this](const QString& title, int day) {
        const QString path = QStringLiteral("/m/%1.mp3").arg(title.mid(1));
        charts.Count(PlaySource::Player1, path, title, {}, QDateTime(QDate(2026, 11, day), QTime(20, 0)));
        window->TakePlay(path, title);
    };
    play(QStringLiteral("T299"), 22); // from the first rows to the top
    play(QStringLiteral("T297"), 22); // from below the limit
    play(QStringLiteral("T999"), 22); // new, and below the limit
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
    Fill(4);
    Open();
    table->selectRow(0);
    Action("MarkierteTitelLoeschen")->trigger();
    EXPECT_EQ(charts.Size(), 3);
    EXPECT_EQ(Answer("AlleTitelLoeschen", QStringLiteral("Nein")),
              QStringLiteral("Löschen|Achtung+++ Die gesamten Charts löschen? +++Achtung"));
    EXPECT_EQ(charts.Size(), 3);
    Answer("AlleTitelLoeschen", QStringLiteral("Ja"));
    EXPECT_EQ(charts.Size(), 0);
    EXPECT_EQ(table->model()->rowCount(), 0);
}

TEST_F(frmChartsTest, SendsMarkedTitlesToTheLists) {
    Fill(3);
    Open();
    QStringList sent;
    QObject::connect(window.get(), &frmCharts::TitlesWanted, [&sent](int player, const QList<ChartEntry>& titles) {
        sent.append(QString::number(player) + titles.front().title + QString::number(titles.size()));
    });
    Action("TitelInPlayer1Wiedergeben")->trigger();
    table->selectRow(1);
    Action("TitelInPlayer2Wiedergeben")->trigger();
    Action("AllesMarkieren")->trigger();
    Action("TitelInBeidenPlayerWiedergeben")->trigger();
    EXPECT_EQ(sent.join(u' '), QStringLiteral("2T11 0T23"));
}

TEST_F(frmChartsTest, AsksBeforeItPrints) {
    Fill(130);
    Open(120);
    EXPECT_EQ(Answer("ChartsDrucken", QStringLiteral("Nein")),
              QStringLiteral("Charts drucken|Sollen 120 Titel auf 3 Seiten ausgedruckt werden?"));
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageSize(QPageSize(QPageSize::A4));
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(folder.Path(QStringLiteral("c.pdf")));
    ASSERT_TRUE(window->PrintOn(printer));
    const QByteArray pdf = folder.Read(QStringLiteral("c.pdf"));
    EXPECT_TRUE(pdf.startsWith("%PDF"));
    EXPECT_TRUE(pdf.contains("/Count 3")) << "pages";
    ASSERT_TRUE(window->ExportTo(folder.Path(QStringLiteral("c.csv"))));
    EXPECT_EQ(folder.Read(QStringLiteral("c.csv")).count('\n'), 121);
}

} // namespace kalvo
