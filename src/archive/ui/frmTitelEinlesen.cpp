#include "archive/ui/frmTitelEinlesen.h"

#include "archive/WatchedFolders.h"
#include "archive/ui/FolderTree.h"
#include "archive/ui/ImportFileModel.h"
#include "archive/ui/MenuButton.h"
#include "archive/ui/PassedOverList.h"
#include "archive/ui/TagValues.h"
#include "widgets/ElidedLabel.h"
#include "widgets/IconButton.h"
#include "widgets/xMessageBox.h"

#include <QCoreApplication>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QStringListModel>

#include <algorithm>

namespace kalvo {

QString frmTitelEinlesen::Folder() const {
    return folder_->text().trimmed();
}

void frmTitelEinlesen::ChooseFolder(const QString& path) {
    folder_->setText(QDir::toNativeSeparators(path));
}

void frmTitelEinlesen::SetWork(Work work) {
    work_ = work;
    const bool idle = work == Work::None;
    const bool any = found_->rowCount() > 0;
    scan_->setEnabled(idle);
    markAll_->setEnabled(idle && any);
    start_->setEnabled(idle && any);
    tree_->setEnabled(idle);
    folder_->setReadOnly(!idle);
    cancel_->setText(idle ? tr("Schließen") : tr("Abbrechen"));
    if (idle && closing_)
        QDialog::reject();
}

void frmTitelEinlesen::reject() {
    switch (work_) {
    case Work::None:
        return QDialog::reject();
    case Work::Scan:
        cancelled_ = closing_ = true;
        return;
    case Work::Import:
        closing_ = true;
        import_->Cancel();
        return;
    }
}

void frmTitelEinlesen::RefuseFolder() {
    const QString text = tr("Kein gültiger Ordner!");
    scanText_->SetText(text);
    xMessageBox::Ask(this, windowTitle(), text, {}, xMessageBox::Sign::Warning);
}

void frmTitelEinlesen::Scan(ScanMethod method) {
    if (work_ != Work::None)
        return;
    found_->Clear();
    folders_->setStringList({});
    ShowPassedOver({});
    ShowMarked();
    foundCount_->setText(QString::number(0));
    cancelled_ = closing_ = false;
    SetWork(Work::Scan);
    // Events run between the folders: whoever owns the dialog may delete it meanwhile.
    const QPointer<frmTitelEinlesen> alive(this);
    const ScanResult result = ScanFolder(Folder(), method, [&alive, method](const ScanProgress& progress) {
        return alive && alive->ScanStep(progress, method) && alive;
    });
    if (!alive)
        return;
    if (result.validRoot)
        ShowScanResult(result);
    SetWork(Work::None);
    if (!result.validRoot)
        RefuseFolder();
}

/** False ends the scan. */
bool frmTitelEinlesen::ScanStep(const ScanProgress& progress, ScanMethod method) {
    if (method == ScanMethod::Alternative) {
        if (folders_->rowCount() < progress.folders && folders_->insertRow(folders_->rowCount()))
            folders_->setData(folders_->index(folders_->rowCount() - 1), progress.folder);
        scanText_->SetText(tr("Ordner gefunden: ") + QString::number(progress.folders));
    } else {
        scanText_->SetText(QDir::toNativeSeparators(progress.folder));
    }
    const QPointer<frmTitelEinlesen> alive(this);
    QCoreApplication::processEvents();
    return alive && !cancelled_;
}

void frmTitelEinlesen::ShowScanResult(const ScanResult& result) {
    found_->Append(result.files);
    ShowPassedOver(result.passedOver);
    foundCount_->setText(QString::number(result.files.size()));
    scanText_->SetText(QString::number(result.files.size()) + tr(" kompatible Dateien gefunden"));
}

void frmTitelEinlesen::Offer(const QStringList& files) {
    if (work_ != Work::None)
        return;
    found_->Clear();
    ScanResult offered;
    offered.files = files;
    ShowScanResult(offered);
    SetWork(Work::None);
    MarkAll();
}

void frmTitelEinlesen::WatchChosen(WatchedFolders& watched) {
    if (!watched.Add(Folder()) && !watched.Folders().contains(Folder()))
        RefuseFolder();
}

void frmTitelEinlesen::MarkAll() {
    files_->selectAll();
    files_->scrollToBottom();
    files_->setFocus(Qt::OtherFocusReason);
}

int frmTitelEinlesen::MarkedCount() const {
    int count = 0;
    for (const QItemSelectionRange& range : files_->selectionModel()->selection())
        count += range.height();
    return count;
}

QStringList frmTitelEinlesen::MarkedPaths() const {
    QList<std::pair<int, int>> rows;
    for (const QItemSelectionRange& range : files_->selectionModel()->selection())
        rows.append({range.top(), range.bottom()});
    std::sort(rows.begin(), rows.end());
    QStringList paths;
    for (const auto& [first, last] : std::as_const(rows)) {
        for (int row = first; row <= last; ++row)
            paths.append(found_->PathAt(row));
    }
    return paths;
}

void frmTitelEinlesen::ShowMarked() {
    markedCount_->setText(QString::number(MarkedCount()) + tr(" Titel"));
}

void frmTitelEinlesen::StartImport() {
    if (work_ != Work::None)
        return;
    const QStringList paths = MarkedPaths();
    closing_ = false;
    ShowPassedOver({});
    SetWork(Work::Import);
    progressText_->SetText(tr("0 von ") + QString::number(paths.size()));
    progress_->setMaximum(qMax(1, static_cast<int>(paths.size())));
    progress_->setValue(0);
    shown_.invalidate();
    import_->Start(paths);
}

void frmTitelEinlesen::ShowProgress(const ImportProgress& progress) {
    // Thousands of files per second come by; the eye follows thirty.
    constexpr qint64 milliseconds = 33;
    if (shown_.isValid() && shown_.elapsed() < milliseconds && progress.done < progress.marked)
        return;
    shown_.start();
    file_->SetText(QDir::toNativeSeparators(progress.path));
    values_->Show(progress.record);
    progressText_->SetText(QString::number(progress.done) + tr(" von ") + QString::number(progress.marked));
    progress_->setValue(progress.done);
}

/** The list takes the place of the tag values, which are empty then. */
void frmTitelEinlesen::ShowPassedOver(const QList<PassedOver>& files) {
    values_->setVisible(files.isEmpty());
    passedOver_->Show(files);
}

void frmTitelEinlesen::EndImport(const ImportReport& report) {
    progressText_->SetText(report.Text());
    file_->SetText({});
    values_->Show({});
    progress_->setValue(0);
    ShowPassedOver(report.passedOver);
    Q_EMIT Finished(report);
    SetWork(Work::None);
}

} // namespace kalvo
