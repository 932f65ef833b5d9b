#include "live/GuestCatalog.h"

#include "archive/TextFolding.h"

#include <algorithm>
#include <numeric>

namespace kalvo {

namespace {

constexpr int kMostWords = 8;
/** In front of artist and title, so that what begins with a text is found by a search for mark and text. */
constexpr char kMark = '\x01';

std::string KeyOf(std::string_view utf8) {
    std::string folded;
    TextFolding::AppendFolded(utf8, folded);
    std::string key = TextFolding::SortKey(folded);
    std::replace(key.begin(), key.end(), kMark, ' ');
    return key;
}

/** The text up to the next NUL from `place` on, which moves behind it. */
QString NextText(const std::string& texts, std::size_t& place) {
    const std::string_view text(texts.c_str() + place);
    place += text.size() + 1;
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

void AppendText(std::string& texts, std::string_view text) {
    texts.append(text.substr(0, text.find('\0')));
    texts += '\0';
}

} // namespace

void GuestCatalog::Append(qint64 nr, std::string_view title, std::string_view artist, std::string_view duration) {
    numbers_.push_back(nr);
    places_.push_back(names_.size());
    AppendText(names_, title);
    AppendText(names_, artist);
    AppendText(names_, duration);
    keys_.Append(kMark + KeyOf(artist) + kMark + KeyOf(title));
}

void GuestCatalog::Settle() {
    std::vector<std::uint32_t> order(Count());
    std::iota(order.begin(), order.end(), 0U);
    std::stable_sort(order.begin(), order.end(),
                     [this](std::uint32_t one, std::uint32_t other) { return keys_.At(one) < keys_.At(other); });
    const auto reorder = [&order](auto& values) {
        auto old = values;
        for (std::size_t row = 0; row < order.size(); ++row)
            values[row] = old[order[row]];
    };
    keys_ = keys_.Reordered(order);
    reorder(numbers_);
    reorder(places_);
    names_.shrink_to_fit();
    byNumber_.resize(Count());
    std::iota(byNumber_.begin(), byNumber_.end(), 0U);
    std::sort(byNumber_.begin(), byNumber_.end(),
              [this](std::uint32_t one, std::uint32_t other) { return numbers_[one] < numbers_[other]; });
}

GuestTitle GuestCatalog::TitleAt(std::uint32_t row) const {
    GuestTitle found;
    std::size_t place = places_[row];
    found.nr = numbers_[row];
    found.title = NextText(names_, place);
    found.artist = NextText(names_, place);
    found.duration = NextText(names_, place);
    return found;
}

GuestCatalog::Found GuestCatalog::Search(const QString& text, std::size_t limit) const {
    const std::string key = KeyOf(text.simplified().toStdString());
    BitSet hits(Count(), true);
    int words = 0;
    for (std::size_t begin = 0, end = 0; begin < key.size() && words < kMostWords; begin = end + 1) {
        end = std::min(key.find(' ', begin), key.size());
        if (end == begin)
            continue;
        BitSet holding(Count());
        keys_.FindContaining(std::string_view(key).substr(begin, end - begin), holding);
        hits &= holding;
        ++words;
    }
    Found found;
    if (words == 0)
        return found;
    BitSet first(Count());
    keys_.FindContaining(kMark + key, first);
    first &= hits;
    found.count = hits.Count();
    const auto take = [&](std::size_t row) {
        if (found.titles.size() < limit)
            found.titles.push_back(TitleAt(static_cast<std::uint32_t>(row)));
    };
    first.ForEach(take);
    hits.ForEach([&](std::size_t row) {
        if (!first.Test(row))
            take(row);
    });
    return found;
}

std::optional<GuestTitle> GuestCatalog::Find(qint64 nr) const {
    const auto place = std::lower_bound(byNumber_.begin(), byNumber_.end(), nr,
                                        [this](std::uint32_t row, qint64 wanted) { return numbers_[row] < wanted; });
    if (place == byNumber_.end() || numbers_[*place] != nr)
        return std::nullopt;
    return TitleAt(*place);
}

} // namespace kalvo
