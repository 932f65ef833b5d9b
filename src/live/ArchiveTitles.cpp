#include "live/ArchiveTitles.h"

#include "archive/ArchiveStatements.h"

#include <algorithm>

namespace kalvo {

TitleRecord ArchiveTitles::TitleOf(const Wish& wish) const {
    if (const std::optional<TitleRecord> known = archive_.FindByPath(wish.path))
        return *known;
    if (const std::optional<TitleRecord> whole = FindCut(wish))
        return *whole;
    const WishNames names = NamesOfWish(wish.display);
    TitleRecord plain;
    plain.Titel = names.title;
    plain.Interpret = names.artist;
    plain.Pfad = wish.path;
    return plain;
}

std::optional<TitleRecord> ArchiveTitles::FindCut(const Wish& wish) const {
    if (!WishFile::MayBeCut(wish.path))
        return std::nullopt;
    const std::vector<qint64> numbers = Select(ArchiveStatements::DuplicateCheck(wish.path + u'*'));
    const QList<TitleRecord> titles = Read(QList<qint64>(numbers.begin(), numbers.end()));
    const auto isWished = [&wish](const TitleRecord& title) {
        return WishFile::StoredPath(title.Pfad) == wish.path &&
               WishFile::StoredDisplay(WishDisplay(title.Interpret, title.Titel)) ==
                   WishFile::StoredDisplay(wish.display);
    };
    const auto found = std::find_if(titles.begin(), titles.end(), isWished);
    return found == titles.end() ? std::nullopt : std::optional(*found);
}

} // namespace kalvo
