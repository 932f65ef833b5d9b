#include "playlists/ui/PlaylistDelegate.h"

#include "playlists/CueText.h"
#include "playlists/Playlist.h"
#include "widgets/Icons.h"
#include "widgets/SkinStyle.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace kalvo {

namespace {

const QColor currentRed(Playlist::kCurrentRed);
constexpr int frameWidth = 2;

/** Name of a mark's picture; empty without a mark. */
QString MarkPicture(EntryIcon icon, bool isCurrent) {
    if (isCurrent && icon != EntryIcon::None && icon != EntryIcon::PlayNext)
        return QStringLiteral("play");
    switch (icon) {
    case EntryIcon::PlayNext:
        return QStringLiteral("play-next");
    case EntryIcon::Played:
        return QStringLiteral("played");
    case EntryIcon::PlayNextRemoved:
        return QStringLiteral("play-next-removed");
    case EntryIcon::None:
        break;
    }
    return {};
}

} // namespace

struct PlaylistDelegate::Cell {
    Cell(const QStyleOptionViewItem& option, const QModelIndex& at)
        : index(at),
          rect(option.rect),
          font(option.font),
          icon(static_cast<EntryIcon>(at.data(Playlist::IconRole).toInt())),
          isCurrent(at.data(Playlist::CurrentRole).toBool()),
          isSelected(option.state.testFlag(QStyle::State_Selected)),
          isEnabled(option.state.testFlag(QStyle::State_Enabled)) {
        font.setBold(isCurrent);
    }

    bool IsFilled() const { return isSelected && !isCurrent; }
    bool IsFirst() const { return index.column() == Playlist::Mark; }

    const QModelIndex& index;
    QRect rect;
    QFont font;
    EntryIcon icon;
    bool isCurrent;
    bool isSelected;
    bool isEnabled;
};

void PlaylistDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const Cell cell(option, index);
    painter->save();
    painter->fillRect(cell.rect, Background(cell));
    if (cell.isCurrent && cell.IsFirst())
        painter->fillRect(QRect(cell.rect.topLeft(), QSize(SkinStyle::Units().Of(0.32), cell.rect.height())),
                          currentRed);
    if (cell.IsFirst())
        PaintMark(*painter, cell);
    else
        PaintText(*painter, cell);
    if (cell.isCurrent && cell.isSelected)
        PaintFrame(*painter, cell);
    painter->restore();
}

/** What is painted, for those who ask the delegate. */
void PlaylistDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    const Cell cell(*option, index);
    const QString name = cell.IsFirst() ? MarkPicture(cell.icon, cell.isCurrent) : QString();
    if (name.isEmpty())
        return;
    option->features |= QStyleOptionViewItem::HasDecoration;
    option->icon = Icons::Icon(name, Ink(cell));
}

QSize PlaylistDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    return {0, SkinStyle::Units().TableRow()};
}

bool PlaylistDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                                 const QModelIndex& index) {
    if (event->type() != QEvent::ToolTip || !index.isValid())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    QStringList lines = {index.siblingAtColumn(Playlist::Title).data().toString(),
                         index.siblingAtColumn(Playlist::Artist).data().toString(),
                         index.siblingAtColumn(Playlist::Info).data().toString(),
                         index.data(Playlist::PathRole).toString()};
    lines.removeAll(QString());
    // Escaped, so that a title with markup shows as what it is.
    const QString text = lines.join(u'\n').toHtmlEscaped().replace(u'\n', QStringLiteral("<br>"));
    QToolTip::showText(event->globalPos(), QStringLiteral("<qt>%1</qt>").arg(text), view, option.rect);
    return true;
}

QColor PlaylistDelegate::Background(const Cell& cell) const {
    const Skin& skin = SkinStyle::Colours();
    if (cell.IsFilled())
        return skin.highlight;
    return cell.index.row() % 2 == 1 ? skin.alt : skin.base;
}

QColor PlaylistDelegate::Ink(const Cell& cell) const {
    const Skin& skin = SkinStyle::Colours();
    if (!cell.isEnabled)
        return cell.IsFilled() ? skin.highlightText : skin.dim;
    if (cell.index.column() == Playlist::Info && !cell.IsFilled() && CueText::Read(cell.index.data().toString()))
        return skin.cued;
    if (cell.isCurrent)
        return currentRed;
    if (cell.IsFilled())
        return skin.highlightText;
    if (cell.IsFirst() && cell.icon == EntryIcon::PlayNext)
        return skin.warning;
    const bool isQuiet = cell.IsFirst() || cell.index.column() == Playlist::RowNumber;
    return isQuiet ? skin.dim : skin.text;
}

QString PlaylistDelegate::TextOf(const QModelIndex& index) const {
    QString text = index.data().toString();
    if (!isNarrow_ || index.column() != Playlist::Title)
        return text;
    const QString artist = index.siblingAtColumn(Playlist::Artist).data().toString();
    return artist.isEmpty() ? text : text + QStringLiteral(" – ") + artist;
}

void PlaylistDelegate::PaintText(QPainter& painter, const Cell& cell) const {
    const int margin = SkinStyle::Units().Of(0.45);
    const QRect room = cell.rect.adjusted(margin, 0, -margin, 0);
    const auto alignment = cell.index.data(Qt::TextAlignmentRole).value<Qt::Alignment>();
    const QString text = TextOf(cell.index).simplified();
    painter.setFont(cell.font);
    painter.setPen(Ink(cell));
    painter.drawText(room, int(alignment) | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(text, Qt::ElideRight, room.width()));
}

void PlaylistDelegate::PaintMark(QPainter& painter, const Cell& cell) const {
    const QString name = MarkPicture(cell.icon, cell.isCurrent);
    if (name.isEmpty())
        return;
    const int size = SkinStyle::Units().Icon();
    const QPoint corner(cell.rect.left() + (cell.rect.width() - size) / 2,
                        cell.rect.top() + (cell.rect.height() - size) / 2);
    painter.drawPixmap(corner, Icons::Pixmap(name, Ink(cell), size, painter.device()->devicePixelRatioF()));
}

void PlaylistDelegate::PaintFrame(QPainter& painter, const Cell& cell) const {
    const QColor colour = SkinStyle::Colours().highlight;
    const QRect& rect = cell.rect;
    painter.fillRect(rect.left(), rect.top(), rect.width(), frameWidth, colour);
    painter.fillRect(rect.left(), rect.bottom() + 1 - frameWidth, rect.width(), frameWidth, colour);
    if (cell.index.column() == (isNarrow_ ? Playlist::Duration : Playlist::Info))
        painter.fillRect(rect.right() + 1 - frameWidth, rect.top(), frameWidth, rect.height(), colour);
}

} // namespace kalvo
