#pragma once

#include <QStringList>
#include <QStyledItemDelegate>

namespace kalvo {

/**
 * Cells of the archive grid: the found piece of text marked, paths dim, figures to the right, vertical grid lines,
 * the current row framed when it is not selected.
 */
class FoundTextDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    /** Roles a model may answer: paint the text dim. */
    static constexpr int dimRole = Qt::UserRole + 1;

    using QStyledItemDelegate::QStyledItemDelegate;

    /** The text searched for, as typed: "*" and "'" separate pieces, which are marked one after the other. */
    void SetSearchText(const QString& text);

    bool IsSearching() const { return !pieces_.isEmpty(); }

    /** Where the pieces stand in `text`, as start and length; empty unless all of them are found in order. */
    QList<std::pair<int, int>> FoundIn(const QString& text) const;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    void PaintMarks(QPainter& painter, const QStyleOptionViewItem& option, const QRect& place,
                    const QString& text) const;

    QStringList pieces_;
};

} // namespace kalvo
