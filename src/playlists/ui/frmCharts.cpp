#include "playlists/ui/frmCharts.h"

#include "base/AtomicFile.h"
#include "base/Clock.h"
#include "base/FileName.h"
#include "playlists/ui/ChartsPrint.h"
#include "widgets/SavePath.h"
#include "widgets/ScreenFit.h"
#include "widgets/SkinStyle.h"
#include "widgets/TextTable.h"
#include "widgets/xMessageBox.h"

#include <QFileDialog>
#include <QMenuBar>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QVBoxLayout>

namespace kalvo {

namespace {

const auto printCaption = QStringLiteral("Charts drucken");

} // namespace

frmCharts::frmCharts(ChartsFile& charts, int limit, PlaylistQuestions& questions, const Clock& clock, QWidget* parent)
    : QDialog(parent),
      charts_(charts),
      limit_(limit),
      questions_(questions),
      clock_(clock),
      model_(new TextTableModel(ChartsRanking::Headers(), {0, 3, 4, 5, 6}, this)),
      table_(new TextTable(*model_, {3.6, 0, 0, 4.6, 4.6, 4.2, 4.6, 13.4}, this)) {
    setObjectName(QStringLiteral("frmCharts"));
    table_->setObjectName(QStringLiteral("ListView1"));
    table_->setAccessibleName(QStringLiteral("Charts"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->addWidget(table_);
    BuildMenu();
    const FontUnits& units = SkinStyle::Units();
    ResizeOnScreen(*this, {units.Of(72), units.Of(40)});
    Reload();
}

void frmCharts::Reload() {
    ranking_ = ChartsRanking(charts_.Entries(), limit_);
    model_->SetRows(Rows(0, ranking_.Shown()));
    setWindowTitle(ranking_.Caption());
}

QList<QStringList> frmCharts::Rows(qsizetype from, qsizetype to) const {
    QList<QStringList> rows;
    for (qsizetype place = from; place < to; ++place)
        rows.append(ranking_.Row(place));
    return rows;
}

void frmCharts::TakePlay(const QString& path, const QString& title) {
    const std::optional<ChartEntry> entry = charts_.FindEntry(path, title);
    if (!entry)
        return;
    const qsizetype shown = model_->rowCount();
    const auto [from, to] = ranking_.Take(*entry);
    const bool wasShown = from >= 0 && from < shown;
    if (wasShown && to > from) { // the clock was set back
        model_->SetRows(Rows(0, ranking_.Shown()));
    } else if (to < ranking_.Shown()) {
        if (wasShown)
            model_->MoveRow(static_cast<int>(from), static_cast<int>(to));
        else
            model_->InsertRow(static_cast<int>(to), ranking_.Row(to));
        if (model_->rowCount() > ranking_.Shown())
            model_->RemoveRow(model_->rowCount() - 1);
        const qsizetype last = wasShown ? from : ranking_.Shown() - 1;
        model_->ChangeRows(static_cast<int>(to), Rows(to, last + 1)); // their places are other ones
    }
    setWindowTitle(ranking_.Caption());
}

void frmCharts::BuildMenu() {
    auto* bar = new QMenuBar(this);
    layout()->setMenuBar(bar);
    QMenu* file = bar->addMenu(QStringLiteral("&Charts"));
    Add(*file, QStringLiteral("ChartsDrucken"), QStringLiteral("&Drucken..."), &frmCharts::ChartsDrucken);
    Add(*file, QStringLiteral("ChartsDruckvorschau"), QStringLiteral("Druck&vorschau..."),
        &frmCharts::ChartsDruckvorschau);
    Add(*file, QStringLiteral("ChartsAlsPdf"), QStringLiteral("Als &PDF speichern..."), &frmCharts::ChartsAlsPdf);
    Add(*file, QStringLiteral("ChartsExportieren"), QStringLiteral("Als &CSV exportieren..."),
        &frmCharts::ChartsExportieren);
    file->addSeparator();
    file->addAction(QStringLiteral("&Schließen"), QKeySequence::Close, this, &QDialog::close);
    QMenu* titles = bar->addMenu(QStringLiteral("&Titel"));
    Add(*titles, QStringLiteral("AllesMarkieren"), QStringLiteral("Alles &markieren"), &frmCharts::AllesMarkieren);
    AddSending(*titles, QStringLiteral("TitelInPlayer1Wiedergeben"), QStringLiteral("Titel in Player &1 wiedergeben"),
               1);
    AddSending(*titles, QStringLiteral("TitelInPlayer2Wiedergeben"), QStringLiteral("Titel in Player &2 wiedergeben"),
               2);
    AddSending(*titles, QStringLiteral("TitelInBeidenPlayerWiedergeben"),
               QStringLiteral("Titel in &beiden Playern wiedergeben"), 0);
    titles->addSeparator();
    Add(*titles, QStringLiteral("MarkierteTitelLoeschen"), QStringLiteral("M&arkierte Titel löschen"),
        &frmCharts::MarkierteTitelLoeschen);
    Add(*titles, QStringLiteral("AlleTitelLoeschen"), QStringLiteral("Alle Titel &löschen..."),
        &frmCharts::AlleTitelLoeschen);
    findChild<QAction*>(QStringLiteral("ChartsDrucken"))->setShortcut(QKeySequence::Print);
    findChild<QAction*>(QStringLiteral("MarkierteTitelLoeschen"))->setShortcut(QKeySequence::Delete);
    findChild<QAction*>(QStringLiteral("AllesMarkieren"))->setShortcut(QKeySequence::SelectAll);
    table_->setContextMenuPolicy(Qt::ActionsContextMenu);
    table_->addActions(titles->actions());
}

void frmCharts::Add(QMenu& menu, const QString& name, const QString& text, void (frmCharts::*act)()) {
    QAction* action = menu.addAction(text);
    action->setParent(this);
    action->setObjectName(name);
    connect(action, &QAction::triggered, this, act);
}

void frmCharts::AddSending(QMenu& menu, const QString& name, const QString& text, int player) {
    QAction* action = menu.addAction(text);
    action->setObjectName(name);
    connect(action, &QAction::triggered, this, [this, player] {
        QList<ChartEntry> titles;
        const QList<int> rows = table_->SelectedRows();
        for (const int row : rows)
            titles.append(ranking_.At(row));
        if (!titles.isEmpty())
            Q_EMIT TitlesWanted(player, titles);
    });
}

void frmCharts::AlleTitelLoeschen() {
    const QString answer = xMessageBox::Ask(this, QStringLiteral("Löschen"),
                                            QStringLiteral("Achtung+++ Die gesamten Charts löschen? +++Achtung"),
                                            {QStringLiteral("Ja"), QStringLiteral("Nein")}, xMessageBox::Sign::Warning);
    if (answer != QStringLiteral("Ja"))
        return;
    if (!charts_.Clear())
        questions_.Tell(QStringLiteral("Die Charts konnten nicht geschrieben werden."));
    Reload();
}

void frmCharts::MarkierteTitelLoeschen() {
    QList<int> numbers;
    const QList<int> rows = table_->SelectedRows();
    for (const int row : rows)
        numbers.append(ranking_.At(row).number);
    if (numbers.isEmpty())
        return;
    if (!charts_.Remove(numbers))
        questions_.Tell(QStringLiteral("Die Charts konnten nicht geschrieben werden."));
    Reload();
}

void frmCharts::AllesMarkieren() {
    table_->selectAll();
}

void frmCharts::ChartsDrucken() {
    QPrinter printer(QPrinter::HighResolution);
    const ChartsPrint print(ranking_, clock_.Now().date());
    const QString question = QStringLiteral("Sollen ") + QString::number(ranking_.Shown()) +
                             QStringLiteral(" Titel auf ") + QString::number(print.PageCount(printer)) +
                             QStringLiteral(" Seiten ausgedruckt werden?");
    if (xMessageBox::Ask(this, printCaption, question, {QStringLiteral("Ja"), QStringLiteral("Nein")}) !=
        QStringLiteral("Ja"))
        return;
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const bool isSent = print.Print(printer);
    xMessageBox::Ask(this, printCaption,
                     isSent ? QStringLiteral("Charts erfolgreich zum Drucker gesendet")
                            : QStringLiteral("Die Charts konnten nicht gedruckt werden."),
                     {QStringLiteral("OK")}, isSent ? xMessageBox::Sign::None : xMessageBox::Sign::Warning);
}

void frmCharts::ChartsDruckvorschau() {
    auto* preview = new QPrintPreviewDialog(this); // modeless: the players are needed meanwhile
    preview->setAttribute(Qt::WA_DeleteOnClose);
    preview->setObjectName(QStringLiteral("frmDruckvorschau"));
    preview->setWindowTitle(QStringLiteral("Druckvorschau"));
    connect(preview, &QPrintPreviewDialog::paintRequested, this, [this](QPrinter* paper) { PrintOn(*paper); });
    preview->resize(size());
    preview->show();
}

void frmCharts::ChartsAlsPdf() {
    const QString path =
        AskPath(QStringLiteral("Charts als PDF speichern"), QStringLiteral("PDF (*.pdf)"), QStringLiteral("pdf"));
    if (path.isEmpty())
        return;
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(path);
    if (!PrintOn(printer))
        TellFailure(path);
}

void frmCharts::ChartsExportieren() {
    const QString path =
        AskPath(QStringLiteral("Charts als CSV exportieren"), QStringLiteral("Tabelle (*.csv)"), QStringLiteral("csv"));
    if (!path.isEmpty() && !ExportTo(path))
        TellFailure(path);
}

bool frmCharts::PrintOn(QPrinter& printer) const {
    return ChartsPrint(ranking_, clock_.Now().date()).Print(printer);
}

bool frmCharts::ExportTo(const QString& path) const {
    return WriteAtomically(path, ranking_.Csv());
}

void frmCharts::TellFailure(const QString& path) {
    questions_.Tell(QStringLiteral("Die Datei „%1“ konnte nicht geschrieben werden.").arg(FileName::Last(path)));
}

QString frmCharts::AskPath(const QString& title, const QString& filter, const QString& ending) {
    QFileDialog dialog(this, title, {}, filter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(ending);
    dialog.selectFile(QStringLiteral("Charts ") + clock_.Now().toString(QStringLiteral("yyyy-MM-dd")));
    return AskSavePath(dialog, {u'.' + ending});
}

} // namespace kalvo
