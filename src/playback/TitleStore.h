#pragma once

#include "playback/TitleRows.h"

namespace kalvo {

/**
 * What is known of titles, by their paths. A Row is a value with kPlaces, Places() and FromPlaces(): the same number of
 * numbers for every title. Threads, errors and the file: see TitleRows.
 */
template<typename Row>
class TitleStore {
public:
    TitleStore(QString file, TitleRows::Access access, const Clock& clock) : rows_(std::move(file), access, clock) {}

    std::optional<Row> Find(const QString& path) {
        const std::optional<QJsonArray> row = rows_.Find(path, Row::kPlaces);
        return row ? std::optional(Row::FromPlaces(*row)) : std::nullopt;
    }
    void Put(const QString& path, const Row& title) { rows_.Put(path, title.Places()); }

private:
    TitleRows rows_;
};

} // namespace kalvo
