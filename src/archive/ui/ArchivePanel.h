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

class ArchiveCategories;
class ArchiveSide;
class EmptyArchive;
class IconButton;
class KeySplitter;
class SelectedTitleView;

/**
 * The archive's part of the main window: quick search `Text1`, found count `Label23`, count `lblAnzahl`, the category
 * tree `TreeView1`, the grid `DataGrid2`, the selected title and, in wide windows, the column beside the grid.
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
    QList<qint64> MarkedNumbers() const { return grid_->MarkedNumbers(); }
    QList<ArchiveField> VisibleFields() const { return grid_->VisibleFields(); }
    /** As a click on the column's head. */
    void SortBy(ArchiveField field);
    void SetWheelRows(int rows) { grid_->SetWheelRows(rows); }
    void ReloadColumns() { grid_->ReloadColumns(); }
    /** Shows what has changed in the archive since. */
    void Refresh();
    /**
     * Shows what a record source selects and how many titles it found; the search box, which did not ask for them, is
     * emptied. found: text to mark in the cells. False, and nothing changes, when the statement is not understood.
     */
    bool ShowSource(const QString& statement, const QString& found = {});
    /** Makes a row the current and only marked one. */
    void GoToRow(int row);
    /** -1 without a current row. */
    int CurrentRow() const { return grid_->currentIndex().row(); }
    /** Text of the count label until the archive changes or is shown anew. */
    void ShowCountText(const QString& text);

    /** Whether the user wants the tree; a narrow window folds it away until its button is pressed. */
    bool IsTreeShown() const { return treeShown_; }
    /** Fills the tree when it opens; the default record source is shown when it closes. */
    void ShowTree(bool shown);
    /** Width that the tree had last, in logical pixels. */
    int TreeWidth() const { return treeWidth_; }
    void SetTreeWidth(int width);
    /** The selected title: where pre-listening starts, and what it has to say. */
    SelectedTitleView& Title() { return *title_; }
    ArchiveSide& Side() { return *side_; }
    /** Whether the user wants the column beside the grid; without it the selected title stands in a line below. */
    void ShowSide(bool shown);
    ArchiveCategories& Categories() { return *categories_; }
    /** Narrow leaves out the tree, the selected title and the tool buttons; wide has room for the column. */
    void SetLayoutMode(LayoutMode mode);
    /** One more group in the grid's context menu; the actions stay the caller's. */
    void AddContextActions(const QList<QAction*>& actions);

    /** A page that can take the grid's place; one, hidden at first. */
    void SetGuide(QWidget& guide);
    void ShowGuide(bool shown);
    bool IsGuideShown() const { return guideShown_; }

    /** One more button at the head's right end; the action stays the caller's. */
    void AddTool(const QString& icon, QAction& action);

    /** Text of the search box, changed without a search. */
    void SetSearchText(const QString& text);
    QString SearchText() const;

Q_SIGNALS:
    /** Double click. */
    void TitleActivated(const kalvo::TitleRecord& record);
    /** Enter in the grid, or `Label5`. */
    void PreListenRequested(const kalvo::TitleRecord& record);
    /** Other mouse buttons on `Label5`, or the button beside it; an empty record when no title is selected. */
    void HeadphonesRequested(const kalvo::TitleRecord& record);
    /** list: 1 or 2. */
    void AddToListRequested(int list, const QList<kalvo::TitleRecord>& records);
    /** The import dialog is wanted. */
    void ImportRequested();
    void CurrentTitleChanged();
    /** Del in the grid. */
    void DeleteRequested();
    /** The tree was opened, closed or resized by the user. */
    void TreeChanged();
    /** The column beside the grid has come or gone. */
    void SideChanged();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void BuildSearchBox();
    QBoxLayout* BuildHead();
    void BuildBody();
    void ConnectArchive();
    void ConnectGrid();
    void ConnectTree();
    bool IsTreeVisible() const { return treeShown_ && !treeFolded_; }
    GridFilter Filter() const;
    void ApplyTree();
    void ApplySide();
    void ApplyLook();
    void QuickSearch(const QString& text);
    bool ShowRows(const QString& statement, const QString& found);
    void ShowCount();
    void ShowBody();
    void ShowFound();
    void ShowCurrentTitle();
    void SaveLayout();

    Archive& archive_;
    DataFolder folder_;
    QLabel* heading_;
    QLineEdit* search_; ///< `Text1`
    QAction* searchSign_ = nullptr;
    QAction* clearSearch_;
    QLabel* found_;         ///< `Label23`
    QLabel* count_;         ///< `lblAnzahl`
    IconButton* tree_;      ///< opens the tree
    QList<QWidget*> tools_; ///< buttons at the head's right end
    QWidget* head_;
    KeySplitter* sides_;
    QStackedWidget* body_;
    ArchiveGrid* grid_;
    EmptyArchive* empty_;
    QWidget* guide_ = nullptr;
    SelectedTitleView* title_;
    ArchiveSide* side_;
    ArchiveCategories* categories_;
    QTimer countDelay_;
    int treeWidth_ = 210;
    bool treeShown_ = false;
    bool treeFolded_ = false;
    bool guideShown_ = false;
    bool sideShown_ = true;
    LayoutMode mode_ = LayoutMode::Normal;
    bool settingSearch_ = false; ///< the program itself writes the search box
};

} // namespace kalvo
