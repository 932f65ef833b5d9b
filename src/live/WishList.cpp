#include "live/WishList.h"

#include <algorithm>

namespace kalvo {

WishList::WishList(const QString& path, const Clock& clock, QObject* parent)
    : QObject(parent), file_(path, clock), clock_(clock) {}

void WishList::Load() {
    wishes_ = file_.Read();
    for (Wish& wish : wishes_)
        wish.id = ++lastId_;
    isSaved_ = true;
    Q_EMIT Changed();
}

int WishList::RowOf(quint64 id) const {
    const auto found = std::find_if(wishes_.begin(), wishes_.end(), [id](const Wish& wish) { return wish.id == id; });
    return found == wishes_.end() ? -1 : static_cast<int>(found - wishes_.begin());
}

quint64 WishList::Add(Wish wish) {
    if (wish.path.isEmpty())
        return 0;
    wish.guest = wish.guest.trimmed();
    wish.display = wish.display.trimmed();
    if (wish.time.isEmpty())
        wish.time = WishTime(clock_.Now());
    wish.id = ++lastId_;
    wishes_.append(wish);
    Note(isSaved_ ? file_.Append(wish) : file_.Write(wishes_));
    Q_EMIT Changed();
    Q_EMIT Added(wish);
    return wish.id;
}

QList<WishList::Removed> WishList::Remove(const QList<quint64>& ids) {
    QList<Removed> removed;
    QList<Wish> kept;
    for (int row = 0; row < wishes_.size(); ++row) {
        if (ids.contains(wishes_.at(row).id))
            removed.append({row, wishes_.at(row)});
        else
            kept.append(wishes_.at(row));
    }
    if (removed.isEmpty())
        return removed;
    wishes_ = kept;
    Save();
    Q_EMIT Changed();
    return removed;
}

void WishList::PutBack(const QList<Removed>& removed) {
    for (const Removed& one : removed)
        wishes_.insert(std::min<qsizetype>(one.row, wishes_.size()), one.wish);
    Save();
    Q_EMIT Changed();
}

QList<WishList::Removed> WishList::Clear() {
    QList<quint64> ids;
    for (const Wish& wish : wishes_)
        ids.append(wish.id);
    return Remove(ids);
}

bool WishList::Save() {
    return Note(file_.Write(wishes_));
}

bool WishList::Note(bool isWritten) {
    isSaved_ = isWritten;
    if (!isWritten)
        Q_EMIT WriteFailed(QStringLiteral("Der Wunschzettel kann nicht geschrieben werden."));
    return isWritten;
}

} // namespace kalvo
