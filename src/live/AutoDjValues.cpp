#include "live/AutoDjValues.h"

#include "archive/CategoryLists.h"
#include "archive/TextFolding.h"

#include <QSet>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace kalvo::AutoDjValues {

namespace {

QStringList Sorted(const QStringList& values) {
    std::vector<std::pair<std::string, QString>> keyed;
    keyed.reserve(static_cast<std::size_t>(values.size()));
    for (const QString& value : values) {
        if (const QString trimmed = value.trimmed(); !trimmed.isEmpty())
            keyed.emplace_back(TextFolding::SortKey(TextFolding::Folded(trimmed)), trimmed);
    }
    std::sort(keyed.begin(), keyed.end());
    keyed.erase(std::unique(keyed.begin(), keyed.end()), keyed.end());
    QStringList sorted;
    sorted.reserve(static_cast<qsizetype>(keyed.size()));
    for (const auto& [key, value] : keyed)
        sorted.append(value);
    return sorted;
}

} // namespace

std::optional<QStringList> Read(const DataFolder& folder, ArchiveField field) {
    const std::optional<QStringList> file = CategoryLists::Read(folder, field);
    return file ? std::optional(Sorted(*file)) : std::nullopt;
}

QStringList Offered(const QStringList& values, const QString& text, const QStringList& taken) {
    QStringList offered = text.isEmpty() ? values : values.filter(text, Qt::CaseInsensitive);
    if (!taken.isEmpty()) {
        const QSet<QString> gone(taken.begin(), taken.end());
        offered.removeIf([&gone](const QString& value) { return gone.contains(value); });
    }
    return offered;
}

} // namespace kalvo::AutoDjValues
