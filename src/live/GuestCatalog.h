#pragma once

#include "archive/FoldedTexts.h"

#include <QString>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kalvo {

struct GuestTitle {
    qint64 nr = 0; ///< in the archive
    QString title;
    QString artist;
    QString duration; ///< "mm:ss"
};

/**
 * What the guests may see of the archive: names and lengths of its titles, no paths. Built by one thread, Append() for
 * each title, then Settle(); from then on it does not change and any thread may ask it.
 */
class GuestCatalog {
public:
    struct Found {
        std::vector<GuestTitle> titles; ///< by artist and title, at most as many as wanted
        std::size_t count = 0;          ///< of all that were found
    };

    /** Texts in UTF-8. */
    void Append(qint64 nr, std::string_view title, std::string_view artist, std::string_view duration);
    void Settle();

    std::size_t Count() const { return numbers_.size(); }
    /**
     * Titles that hold each word of the text in artist or title, without case and accents. Titles in which a name
     * begins with the text come first. Nothing for a text without words; words after the eighth are passed over.
     */
    Found Search(const QString& text, std::size_t limit) const;
    std::optional<GuestTitle> Find(qint64 nr) const;

private:
    GuestTitle TitleAt(std::uint32_t row) const;

    std::vector<qint64> numbers_;         ///< by row
    std::vector<std::uint32_t> byNumber_; ///< rows by ascending numbers
    std::vector<std::size_t> places_;     ///< of a row's texts in names_
    std::string names_;                   ///< title, artist, duration, each closed by a NUL
    FoldedTexts keys_;                    ///< artist and title as they are compared, each behind a mark
};

} // namespace kalvo
