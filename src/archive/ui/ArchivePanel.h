#pragma once

#include "archive/ui/ArchiveGrid.h"
#include "base/DataFolder.h"
#include "widgets/LayoutMode.h"

#include <QTimer>
#include <QWidget>

class QAction;
class QBoxLayout;
class QLabel;
class QLineEdit;
class QStackedWidget;

namespace kalvo {

class EmptyArchive;
class SelectedTitleLine;

/**
 * The archive's part of the main window: quick search `Text1`, found count `Label23`, count `lblAnzahl`, the grid
 * `DataGrid2` and the line of the selected title.
 */
class ArchivePanel : public QWidget {
    Q_OBJECT

public:
    /** archive and settings outlive the panel; folder: where the layout file is kept. */
    ArchivePanel(Archive& archive, Settings& settings, const DataFolder& folder, QWidget* parent = nullptr);

    /** See ArchiveGrid. */
    QList<TitleRecord> SelectedRecords() const { return grid_->SelectedRecords(); }
    TitleRecord CurrentRecord() const { return grid_->CurrentRecord(); }
    void MAAlleTitelAuswaehlen() { grid_->MAAlleTitelAuswaehlen(); }

    void SetWheelRows(int rows) { grid_->SetWheelRows(rows); }
    void ReloadColumns() { grid_->ReloadColumns(); }

    /** Shows what has changed in the archive since. */
    void Refresh();
    /** Narrow leaves out the line of the selected title and the tool buttons. */
    void SetLayoutMode(LayoutMode mode);
    /** The grid's context menu; the actions stay the caller's. */
    void SetContextActions(const QList<QAction*>& actions);

    /** Text of the search box, changed without a search. */
    void SetSearchText(const QString& text);
    QString SearchText() const;

Q_SIGNALS:
    /** Double click. */
    void TitleActivated(const kalvo::TitleRecord& record);
    /** Enter in the grid. */
    void PreListenRequested(const kalvo::TitleRecord& record);
    /** list: 1 or 2. */
    void AddToListRequested(int list, const QList<kalvo::TitleRecord>& records);
    /** The import dialog is wanted. */
    void ImportRequested();
    void CurrentTitleChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void BuildSearchBox();
    QBoxLayout* BuildHead();
    void BuildBody();
    void ConnectArchive();
    void ConnectGrid();
    void ApplyLook();
    void QuickSearch(const QString& text);
    void ShowCount();
    void ShowFound();
    void ShowCurrentTitle();
    void SaveLayout();

    Archive& archive_;
    DataFolder folder_;
    QLabel* heading_;
    QLineEdit* search_; ///< `Text1`
    QAction* clearSearch_;
    QLabel* found_; ///< `Label23`
    QLabel* count_; ///< `lblAnzahl`
    QWidget* import_;
    QWidget* head_;
    QStackedWidget* body_;
    ArchiveGrid* grid_;
    EmptyArchive* empty_;
    SelectedTitleLine* line_;
    QTimer countDelay_;
    LayoutMode mode_ = LayoutMode::Normal;
    bool settingSearch_ = false; ///< the program itself writes the search box
};

} // namespace kalvo
