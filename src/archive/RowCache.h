#pragma once

#include "archive/ArchiveDatabase.h"

#include <QCache>

#include <vector>

namespace kalvo {

/** The rows lately shown, fetched and kept in pages. */
class RowCache {
public:
    RowCache() : pages_(kPages) {}

    /** The row of this place in `numbers`; fetches its page where needed. */
    const TitleRecord& Row(std::size_t row, const std::vector<qint64>& numbers, const ArchiveDatabase& database);
    void Clear() { pages_.clear(); }

private:
    static constexpr std::size_t kPageRows = 64;
    static constexpr int kPages = 256;

    QCache<std::size_t, QList<TitleRecord>> pages_;
};

} // namespace kalvo
