#pragma once

#include "tags/TitleRecord.h"

#include <QCache>
#include <QList>

#include <functional>
#include <vector>

namespace kalvo {

/** The rows lately shown, fetched and kept in pages. */
class RowCache {
public:
    RowCache() : pages_(kPages) {}

    /** Gives the records of these numbers in their order, empty ones for those that are gone. */
    using Fetch = std::function<QList<TitleRecord>(const QList<qint64>& numbers)>;

    /** The row of this place in `numbers`, valid until the next call; fetches its page where needed. */
    const TitleRecord& Row(std::size_t row, const std::vector<qint64>& numbers, const Fetch& fetch);
    void Clear() { pages_.clear(); }

private:
    static constexpr std::size_t kPageRows = 64;
    static constexpr int kPages = 256;

    QCache<std::size_t, QList<TitleRecord>> pages_;
};

} // namespace kalvo
