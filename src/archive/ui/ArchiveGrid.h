#pragma once

#include "archive/GridColumns.h"
#include "archive/ui/ArchiveModel.h"
#include "archive/ui/MarkedTitles.h"
#include "archive/ui/TypeAhead.h"

#include <QTableView>

namespace kalvo {

class ArchiveHeader;
class FoundTextDelegate;
class Settings;

/**
 * The grid `DataGrid2` over the archive. Its columns can be resized, moved and hidden; every such change is kept in the
 * settings when the mouse button is released. Marked titles stay marked when the same titles are sorted anew or shown
 * again; among other titles the current one alone does.
 */
class ArchiveGrid : public QTableView {
    Q_OBJECT

public:
    /** archive and settings outlive the grid. */
    ArchiveGrid(Archive& archive, Settings& settings, QWidget* parent = nullptr);

    /** From left to right, hidden ones included. */
    const QList<GridColumn>& Columns() const { return columns_; }
    QList<ArchiveField> VisibleFields() const { return GridColumns::VisibleFields(columns_); }

    /** The marked titles in row order; without any the current one; empty without that. */
    QList<TitleRecord> SelectedRecords() const;
    /** `Nr` of the marked titles in row order; empty when none is marked. */
    QList<qint64> MarkedNumbers() const;
    /** An empty record without a current row. */
    TitleRecord CurrentRecord() const;
    bool HasCurrent() const { return currentIndex().isValid(); }

    /** Marks every row. */
    void MAAlleTitelAuswaehlen() { selectAll(); }
    /** What the cells mark; see FoundTextDelegate. */
    void SetSearchText(const QString& text);
    /** Rows that one notch of the mouse wheel moves; at least 1. */
    void SetWheelRows(int rows) { wheelRows_ = qMax(1, rows); }
    /** Takes the columns from the settings again, where somebody else has changed them. */
    void ReloadColumns();
    /** Applies a head's click; the filter tells what the rows are narrowed to. */
    void SortBy(ArchiveField field, GridFilter filter);

    void keyboardSearch(const QString& search) override;

Q_SIGNALS:
    void HeaderClicked(kalvo::ArchiveField field);
    /** The values of a column are wanted in a list; head: its head in global coordinates. */
    void ValueListRequested(kalvo::ArchiveField field, const QRect& head);
    void CurrentTitleChanged();
    void TitleActivated(const kalvo::TitleRecord& record);
    void PreListenRequested(const kalvo::TitleRecord& record);
    /** Width, order or visibility of columns changed and was written to the settings. */
    void ColumnsChanged();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void startDrag(Qt::DropActions actions) override;
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void SetUpHeader();
    void ApplyLook();
    void ApplyColumns();
    void FitColumns();
    void TakeColumnsFromHeader();
    void ColumnsTouched();
    void WriteColumns();
    void ShowColumnMenu(const QPoint& position);
    void ShowColumn(ArchiveField field, bool visible);
    void OpenValueList(int section);
    void ConnectRows();
    void KeepMarks();
    void KeepCurrent();
    QString EmptyHint() const;

    Archive& archive_;
    Settings& settings_;
    ArchiveModel* model_;
    ArchiveHeader* header_;
    FoundTextDelegate* delegate_;
    QList<GridColumn> columns_;
    TypeAhead typeAhead_;
    MarkedTitles marked_;
    QList<RecordCondition> shown_; ///< what the rows on show are narrowed to
    qint64 currentNr_ = 0;         ///< of the current row, so that it is found again among other rows
    bool applying_ = false;        ///< the program itself is changing the header
    bool columnsDirty_ = false;    ///< changed while a mouse button is held
    int wheelRows_ = 3;
    int wheelAngle_ = 0; ///< eighths of a degree that have not moved a row yet
};

} // namespace kalvo
