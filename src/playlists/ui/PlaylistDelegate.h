#pragma once

#include <QStyledItemDelegate>

namespace kalvo {

/** Paints the cells of a playlist: the red entry with bar and play sign, marks, cue points, selection. */
class PlaylistDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /** Narrow: title and artist together in the title's column. */
    void SetNarrow(bool isNarrow) { isNarrow_ = isNarrow; }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    /** The tooltip tells title, artist and path in full. */
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    struct Cell;
    QColor Background(const Cell& cell) const;
    QColor Ink(const Cell& cell) const;
    QString TextOf(const QModelIndex& index) const;
    void PaintText(QPainter& painter, const Cell& cell) const;
    void PaintMark(QPainter& painter, const Cell& cell) const;
    void PaintFrame(QPainter& painter, const Cell& cell) const;

    bool isNarrow_ = false;
};

} // namespace kalvo
