#include "archive/ui/frmDoubletten.h"

#include "archive/ui/DuplicateModel.h"
#include "archive/ui/SearchButton.h"
#include "archive/ui/ShownNumbers.h"
#include "widgets/ElidedLabel.h"
#include "widgets/SkinStyle.h"
#include "widgets/xMessageBox.h"

#include <QAction>
#include <QComboBox>
#include <QDateTime>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QTableView>

#include <algorithm>

namespace kalvo {

namespace {

QString TimeText(const QDateTime& time) {
    return time.isValid() ? time.toString(QStringLiteral("dd.MM.yyyy hh:mm:ss")) : QStringLiteral("unbekannt");
}

} // namespace

frmDoubletten::~frmDoubletten() {
    finder_->disconnect(this); // its last word would find half of the window gone
}

// ---- the search

void frmDoubletten::StartOrCancel() {
    if (finder_->IsRunning())
        return finder_->Cancel();
    found_->Clear();
    shownNumbers_->Show({});
    hint_->clear();
    progress_->setValue(0);
    progressText_->SetText(tr("Bitte warten ..."));
    start_->ShowRunning(true);
    mode_->setEnabled(false);
    finder_->Start(mode_->currentIndex() == 0 ? DuplicateMode::FileNames : DuplicateMode::TagTitles);
}

void frmDoubletten::ShowIdle(const QString& progress) {
    start_->ShowRunning(false);
    mode_->setEnabled(true);
    progressText_->SetText(progress);
}

void frmDoubletten::ShowProgress(const QString& text, int percent) {
    progressText_->SetText(text);
    progress_->setValue(percent);
}

void frmDoubletten::End(const DuplicateReport& report) {
    switch (report.outcome) {
    case DuplicateReport::Outcome::Found:
        shownNumbers_->Show(report.rows);
        found_->Show(report.rows, true);
        FitColumns();
        progress_->setValue(100);
        hint_->setText(DuplicateTexts::Hint(
            mode_->currentIndex() == 0 ? DuplicateMode::FileNames : DuplicateMode::TagTitles, report));
        return ShowIdle(tr("Suche abgeschlossen  100%"));
    case DuplicateReport::Outcome::StalePaths:
        return ShowStale(report);
    case DuplicateReport::Outcome::NoTitles:
        return ShowIdle(tr("Suche nicht möglich"));
    case DuplicateReport::Outcome::Cancelled:
        found_->Clear();
        progress_->setValue(0);
        return ShowIdle(tr("Suche abgebrochen ..."));
    case DuplicateReport::Outcome::Failed:
        return ShowIdle(tr("Das Musikarchiv kann nicht gelesen werden."));
    }
}

void frmDoubletten::ShowStale(const DuplicateReport& report) {
    found_->Show(report.rows, false);
    FitColumns();
    progress_->setValue(0);
    ShowIdle({});
    hint_->setText(DuplicateTexts::Hint(DuplicateMode::FileNames, report));
    xMessageBox::Ask(this, tr("Hinweis"), DuplicateTexts::StaleMessage(report.Titles()), {},
                     xMessageBox::Sign::Warning);
}

/** A column takes what its texts need, but none the room of the others. */
void frmDoubletten::FitColumns() {
    QHeaderView* head = list_->horizontalHeader();
    const FontUnits& units = SkinStyle::Units();
    list_->resizeColumnsToContents();
    const auto bound = [head](int column, int least, int most) {
        head->resizeSection(column, qBound(least, head->sectionSize(column), most));
    };
    bound(DuplicateModel::Path, units.Of(20), std::max(units.Of(20), width() * 3 / 5));
    for (const int column : {DuplicateModel::Artist, DuplicateModel::Title})
        bound(column, units.Of(10), units.Of(18));
}

// ---- what is done with the rows

QList<qint64> frmDoubletten::Selected() const {
    QList<qint64> numbers;
    for (const QModelIndex& row : list_->selectionModel()->selectedRows()) {
        if (const qint64 number = found_->NumberAt(row.row()); number != 0)
            numbers.append(number);
    }
    return numbers;
}

void frmDoubletten::ShowSelection() {
    const bool any = list_->selectionModel()->hasSelection() && !archive_.Bin().IsRunning();
    for (QAction* command : std::as_const(commands_))
        command->setEnabled(any);
    start_->setEnabled(!archive_.Bin().IsRunning());
}

void frmDoubletten::DeleteFromArchive() {
    const QList<qint64> numbers = Selected();
    if (const WriteResult deleted = archive_.DeleteTitles(numbers); !deleted) {
        xMessageBox::Ask(this, windowTitle(), deleted.reason, {}, xMessageBox::Sign::Warning);
        return;
    }
    RemoveRows(numbers);
    Q_EMIT Deleted();
}

void frmDoubletten::MoveToBin() {
    archive_.Bin().Start(Selected());
    list_->setFocus(); // or it would go to the button that closes
    ShowSelection();
}

void frmDoubletten::ShowBinned(const BinReport& report) {
    progress_->setValue(0);
    progressText_->SetText({});
    if (report.deleted)
        RemoveRows(report.numbers);
    ShowSelection();
    if (!report.deleted) {
        xMessageBox::Ask(this, windowTitle(), report.deleted.reason, {}, xMessageBox::Sign::Warning);
    } else if (!report.kept.isEmpty()) {
        xMessageBox::Ask(this, windowTitle(),
                         tr("Diese Dateien konnten nicht in den Papierkorb verschoben werden:") + u'\n' +
                             report.kept.mid(0, 10).join(u'\n') +
                             (report.kept.size() > 10 ? QStringLiteral("\n...") : QString()),
                         {}, xMessageBox::Sign::Warning);
    }
}

void frmDoubletten::RemoveRows(const QList<qint64>& numbers) {
    const int row = list_->currentIndex().row();
    const int top = list_->rowAt(0);
    found_->Remove({numbers.begin(), numbers.end()});
    list_->scrollTo(found_->index(std::min(top, found_->rowCount() - 1), 0), QAbstractItemView::PositionAtTop);
    if (row >= 0 && found_->rowCount() > 0)
        list_->selectRow(std::min(row, found_->rowCount() - 1));
}

void frmDoubletten::ShowFileInformation() {
    const QModelIndex current = list_->currentIndex();
    const TitleRecord title = current.isValid() ? found_->TitleAt(current.row()) : TitleRecord();
    if (title.Nr == 0)
        return;
    const QFileInfo file(title.Pfad);
    const QString text = file.exists()
                             ? tr("Erstellt: ") + TimeText(file.birthTime()) + tr("\nZuletzt Geändert: ") +
                                   TimeText(file.lastModified()) + tr("\nLetzter Zugriff: ") +
                                   TimeText(file.lastRead()) + tr("\nDateigrösse: ") + DuplicateTexts::Size(file.size())
                             : tr("Datei:\n%1\nist nicht mehr vorhanden!").arg(file.filePath());
    xMessageBox::Ask(this, tr("Dateiinformation"), text, {});
}

} // namespace kalvo
