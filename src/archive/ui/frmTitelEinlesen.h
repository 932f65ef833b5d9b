#pragma once

#include "archive/BackgroundRun.h"
#include "archive/TitleImport.h"

#include <QDialog>
#include <QElapsedTimer>

#include <memory>

class QBoxLayout;
class QLabel;
class QLineEdit;
class QListView;
class QProgressBar;
class QPushButton;
class QStringListModel;

namespace kalvo {

class ElidedLabel;
class FolderTree;
class IconButton;
class ImportFileModel;
class MenuButton;
class PassedOverList;
class TagValues;
class WatchedFolders;

/**
 * The import dialog: choose a folder, scan it, mark files, import them. Modeless; a thread walks the folders, so that a
 * disk that wakes up or hangs holds up nothing, the import works in turns of the event loop. While one of them runs the
 * buttons are disabled, "Abbrechen" ends it, and closing the window ends it and closes; titles added so far stay.
 */
class frmTitelEinlesen : public QDialog {
    Q_OBJECT

public:
    /** The archive outlives the dialog. startFolder: the folder of the last import. */
    frmTitelEinlesen(Archive& archive, const QString& startFolder, QWidget* parent = nullptr);
    ~frmTitelEinlesen() override;

    /** Shows the watched folders below the folder tree; they outlive the dialog. Once. */
    void ShowWatched(WatchedFolders& watched);
    /** Shows these files, all marked, as if they had been found; ignored while something runs. See Declined(). */
    void Offer(const QStringList& files);

    /** The chosen folder, to be kept as the start folder of the next time. */
    QString Folder() const;

    void reject() override;

Q_SIGNALS:
    /** An import has ended: the grid can be refreshed. */
    void Finished(const kalvo::ImportReport& report);
    /** Files on offer that the user left out of the import. */
    void Declined(const QStringList& files);

private:
    enum class Work { None, Scan, Import };
    /** What a scan has come by since the window heard of it last. */
    struct ScanNews {
        QStringList folders;
        QStringList files;
    };

    QBoxLayout* BuildFolderRow(const QString& startFolder);
    QBoxLayout* BuildLists();
    void WatchChosen(WatchedFolders& watched);
    QBoxLayout* BuildMarkRow();
    QBoxLayout* BuildProgressRow();
    QBoxLayout* BuildButtons();
    void BuildScanMenu();
    void ChooseFolder(const QString& path);

    void Scan(ScanMethod method);
    void RefuseFolder();
    void ShowScanned(const ScanNews& news, ScanMethod method);
    void ShowFound(const QStringList& files);
    void ShowFoundText();
    void EndScan(const ScanResult& result);
    void StopScan();
    /** Ends what runs; what was found or added so far stays. */
    void Abandon();
    void MarkAll();
    int MarkedCount() const;
    QStringList MarkedPaths() const;
    void TellDeclined(const QStringList& marked);
    void ShowMarked();

    void StartImport();
    void ShowProgress(const ImportProgress& progress);
    void EndImport(const ImportReport& report);
    void ShowPassedOver(const QList<PassedOver>& files);
    void SetWork(Work work);

    TitleImport* import_;
    QBoxLayout* folderColumn_ = nullptr; ///< the tree and what is below it
    FolderTree* tree_;                   ///< `ExplorerTreeView1`
    QLineEdit* folder_;                  ///< `Label5`
    MenuButton* scan_;                   ///< `MyButton1`
    QListView* files_;                   ///< `ListView1`
    ImportFileModel* found_;
    QStringListModel* folders_; ///< of `List1`, the folders of the alternative scan
    ElidedLabel* scanText_;     ///< `Label7`
    QLabel* foundCount_;        ///< `lblCount`
    QLabel* markedCount_;       ///< `Label1`
    QPushButton* markAll_;      ///< `Command3`
    ElidedLabel* file_;         ///< `Label2`, the file being imported
    ElidedLabel* progressText_; ///< `Label3`
    QProgressBar* progress_;    ///< `ProgressBar1`
    TagValues* values_;
    PassedOverList* passedOver_;
    IconButton* start_; ///< `Command1`
    QPushButton* cancel_;
    QElapsedTimer shown_; ///< since the window last showed the import's progress
    Work work_ = Work::None;
    bool offered_ = false;                    ///< what is shown was offered
    std::shared_ptr<BackgroundRun> scanning_; ///< null while nothing is scanned
};

} // namespace kalvo
