#include "archive/ui/frmTitelEinlesen.h"

#include "archive/WatchedFolders.h"
#include "archive/ui/FolderTree.h"
#include "archive/ui/ImportFileModel.h"
#include "archive/ui/MenuButton.h"
#include "archive/ui/PassedOverList.h"
#include "archive/ui/TagValues.h"
#include "widgets/ElidedLabel.h"
#include "widgets/IconButton.h"
#include "widgets/Mnemonics.h"
#include "widgets/xMessageBox.h"

#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QProgressBar>
#include <QPushButton>
#include <QSet>
#include <QStringListModel>

#include <algorithm>
#include <utility>

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
    ShowCaption(*cancel_, idle ? tr("Schließen") : tr("Abbrechen"));
}

void frmTitelEinlesen::Abandon() {
    if (work_ == Work::Scan)
        StopScan();
    if (work_ == Work::Import)
        import_->Cancel();
}

void frmTitelEinlesen::reject() {
    Abandon();
    QDialog::reject();
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
    offered_ = false;
    folders_->setStringList({});
    ShowPassedOver({});
    ShowMarked();
    foundCount_->setText(QString::number(0));
    SetWork(Work::Scan);
    scanning_ = std::make_shared<BackgroundRun>(*this);
    scanning_->Begin([this, folder = Folder(), method](BackgroundRun& run) {
        constexpr qint64 milliseconds = 33; // between two looks at the progress
        QElapsedTimer told;
        told.start();
        ScanNews news;
        int folders = 0;
        const ScanResult result = ScanFolder(folder, method, [&](const ScanProgress& progress) {
            if (std::exchange(folders, progress.folders) != progress.folders)
                news.folders.append(progress.folder);
            news.files += progress.files;
            if (told.elapsed() >= milliseconds) {
                run.Post([this, method, now = std::exchange(news, {})] { ShowScanned(now, method); });
                told.restart();
            }
            return !run.Stopped();
        });
        run.Post([this, method, news, result] {
            ShowScanned(news, method);
            EndScan(result);
        });
    });
}

void frmTitelEinlesen::ShowScanned(const ScanNews& news, ScanMethod method) {
    if (method == ScanMethod::Alternative) {
        folders_->setStringList(folders_->stringList() + news.folders);
        scanText_->SetText(tr("Ordner gefunden: ") + QString::number(folders_->rowCount()));
    } else if (!news.folders.isEmpty()) {
        scanText_->SetText(QDir::toNativeSeparators(news.folders.last()));
    }
    ShowFound(news.files);
}

void frmTitelEinlesen::ShowFound(const QStringList& files) {
    found_->Append(files);
    foundCount_->setText(QString::number(found_->rowCount()));
}

void frmTitelEinlesen::EndScan(const ScanResult& result) {
    scanning_.reset();
    if (result.validRoot) {
        ShowFound(result.files.mid(found_->rowCount()));
        ShowPassedOver(result.passedOver);
        ShowFoundText();
    }
    SetWork(Work::None);
    if (!result.validRoot)
        RefuseFolder();
}

void frmTitelEinlesen::ShowFoundText() {
    scanText_->SetText(QString::number(found_->rowCount()) + tr(" kompatible Dateien gefunden"));
}

/** What was found so far stays; the thread ends by itself, however long its disk takes. */
void frmTitelEinlesen::StopScan() {
    scanning_->Stop();
    scanning_.reset();
    ShowFoundText();
    SetWork(Work::None);
}

void frmTitelEinlesen::Offer(const QStringList& files) {
    if (work_ != Work::None)
        return;
    found_->Clear();
    ShowFound(files);
    offered_ = true;
    ShowPassedOver({});
    ShowFoundText();
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

void frmTitelEinlesen::TellDeclined(const QStringList& marked) {
    const QSet<QString> taken(marked.begin(), marked.end());
    QStringList declined;
    for (int row = 0; row < found_->rowCount() && !marked.isEmpty(); ++row) {
        if (!taken.contains(found_->PathAt(row)))
            declined.append(found_->PathAt(row));
    }
    if (!declined.isEmpty())
        Q_EMIT Declined(declined);
}

void frmTitelEinlesen::ShowMarked() {
    markedCount_->setText(QString::number(MarkedCount()) + tr(" Titel"));
}

void frmTitelEinlesen::StartImport() {
    if (work_ != Work::None)
        return;
    const QStringList paths = MarkedPaths();
    if (offered_)
        TellDeclined(paths);
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
