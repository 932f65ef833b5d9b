#pragma once

#include "archive/Archive.h"
#include "live/AutoDj.h"
#include "live/WishFile.h"

#include <optional>

namespace kalvo {

/** The archive as the live tools see it. The archive outlives this; UI thread. */
class ArchiveTitles final : public TitleSource {
public:
    explicit ArchiveTitles(const Archive& archive) : archive_(archive) {}

    std::vector<qint64> Select(const QString& statement) const override { return archive_.Select(statement); }
    QList<TitleRecord> Read(const QList<qint64>& numbers) const override { return archive_.Read(numbers); }

    /**
     * The title that a wish stands for: that of its path, or, where the wish file's field has cut the path, the one
     * whose path and display text begin so. What the archive does not know is made from the wish alone.
     */
    TitleRecord TitleOf(const Wish& wish) const;

private:
    std::optional<TitleRecord> FindCut(const Wish& wish) const;

    const Archive& archive_;
};

} // namespace kalvo
