#include "archive/RowCache.h"

#include <algorithm>

namespace kalvo {

const TitleRecord& RowCache::Row(std::size_t row, const std::vector<qint64>& numbers, const Fetch& fetch) {
    const std::size_t page = row / kPageRows;
    const QList<TitleRecord>* records = pages_.object(page);
    if (!records) {
        const auto begin = numbers.begin() + static_cast<std::ptrdiff_t>(page * kPageRows);
        const std::size_t count = std::min(kPageRows, numbers.size() - page * kPageRows);
        auto* fetched = new QList<TitleRecord>(fetch(QList<qint64>(begin, begin + static_cast<std::ptrdiff_t>(count))));
        records = fetched;
        pages_.insert(page, fetched); // one page always fits, so it is kept
    }
    return records->at(static_cast<qsizetype>(row % kPageRows)); // NOLINT(clang-analyzer-cplusplus.NewDelete)
}

} // namespace kalvo
