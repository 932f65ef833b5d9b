#include "archive/ui/DuplicateModel.h"

#include "archive/DuplicateReport.h"
#include "widgets/PlainTip.h"

#include <utility>

namespace kalvo {

DuplicateModel::DuplicateModel(Archive& archive, QObject* parent) : QAbstractTableModel(parent), archive_(archive) {
    connect(&archive, &Archive::RecordsChanged, this, &DuplicateModel::FetchAnew);
    connect(&archive, &Archive::RowChanged, this, &DuplicateModel::FetchAnew);
    connect(&archive, &Archive::Deleted, this, &DuplicateModel::FetchAnew);
}

void DuplicateModel::FetchAnew() {
    cache_.Clear();
    if (!numbers_.empty())
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
}

void DuplicateModel::Show(std::vector<qint64> numbers, bool sizes) {
    beginResetModel();
    numbers_ = std::move(numbers);
    sizes_ = sizes;
    cache_.Clear();
    sizeTexts_.clear();
    endResetModel();
}

void DuplicateModel::Remove(const QSet<qint64>& numbers) {
    beginResetModel();
    std::vector<qint64> kept;
    for (const qint64 number : numbers_) {
        const bool strayGap = number == 0 && (kept.empty() || kept.back() == 0);
        if (!strayGap && !numbers.contains(number))
            kept.push_back(number);
    }
    numbers_ = std::move(kept);
    cache_.Clear();
    endResetModel();
}

TitleRecord DuplicateModel::TitleAt(int row) const {
    if (NumberAt(row) == 0)
        return {};
    return cache_.Row(static_cast<std::size_t>(row), numbers_,
                      [this](const auto& numbers) { return archive_.ReadEach(numbers); });
}

int DuplicateModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(numbers_.size());
}

int DuplicateModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QString DuplicateModel::SizeText(const TitleRecord& title) const {
    if (!sizes_ || title.Nr == 0)
        return {};
    QString& text = sizeTexts_[title.Nr];
    if (text.isEmpty())
        text = DuplicateTexts::SizeOf(title.Pfad);
    return text;
}

QVariant DuplicateModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    if (role == Qt::TextAlignmentRole)
        return static_cast<int>(Qt::AlignVCenter | (index.column() == Size ? Qt::AlignRight : Qt::AlignLeft));
    if ((role != Qt::DisplayRole && role != Qt::ToolTipRole) || NumberAt(index.row()) == 0)
        return {};
    const TitleRecord title = TitleAt(index.row());
    const QString path = title.Nr == 0 ? tr("(nicht mehr im Musikarchiv)") : title.Pfad;
    if (role == Qt::ToolTipRole)
        return PlainTip(path);
    switch (index.column()) {
    case Path:
        return path;
    case Artist:
        return title.Interpret;
    case Title:
        return title.Titel;
    default:
        return SizeText(title);
    }
}

QVariant DuplicateModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::TextAlignmentRole)
        return static_cast<int>(Qt::AlignVCenter | (section == Size ? Qt::AlignRight : Qt::AlignLeft));
    if (role != Qt::DisplayRole)
        return {};
    static const QStringList captions{tr("Pfad"), tr("Interpret"), tr("Titel"), tr("Größe")};
    return captions.value(section);
}

/** Empty rows only part the groups. */
Qt::ItemFlags DuplicateModel::flags(const QModelIndex& index) const {
    if (!index.isValid() || NumberAt(index.row()) == 0)
        return Qt::ItemIsEnabled;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}

} // namespace kalvo
