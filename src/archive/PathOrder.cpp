#include "archive/PathOrder.h"

#include "archive/TextFolding.h"

namespace kalvo {

namespace {

class Merger {
public:
    Merger(const TextDictionary& folders, std::span<const std::uint32_t> codes, const FoldedTexts& names)
        : names_(names), ranks_(folders.Ranks().Ranks()) {
        keys_.resize(folders.Ranks().Distinct());
        for (const std::uint32_t code : folders.Ranks().Order())
            keys_[ranks_[code]] = TextFolding::SortKey(folders.Values().At(code));
        GroupByFolder(codes);
        result_.reserve(codes.size());
    }

    std::vector<std::uint32_t> Run() {
        for (std::size_t i = 0; i < keys_.size();)
            i = Emit(i);
        return std::move(result_);
    }

private:
    void GroupByFolder(std::span<const std::uint32_t> codes) {
        starts_.assign(keys_.size() + 1, 0);
        for (const std::uint32_t code : codes)
            ++starts_[ranks_[code] + 1];
        std::partial_sum(starts_.begin(), starts_.end(), starts_.begin());
        files_.resize(codes.size());
        std::vector<std::uint32_t> next(starts_.begin(), starts_.end() - 1);
        for (std::uint32_t title = 0; title < codes.size(); ++title)
            files_[next[ranks_[codes[title]]]++] = title;
        for (std::size_t i = 0; i < keys_.size(); ++i)
            std::sort(files_.begin() + starts_[i], files_.begin() + starts_[i + 1],
                      [this](std::uint32_t left, std::uint32_t right) {
                          const int order = TextFolding::Compare(names_.At(left), names_.At(right));
                          return order != 0 ? order < 0 : left < right;
                      });
    }

    /** Appends the folder's files and everything below it; returns the first folder that is not below it. */
    std::size_t Emit(std::size_t folder) {
        const std::string& key = keys_[folder];
        std::uint32_t file = starts_[folder];
        std::size_t below = folder + 1;
        while (below < keys_.size() && keys_[below].starts_with(key)) {
            const std::string_view rest = std::string_view(keys_[below]).substr(key.size());
            while (file < starts_[folder + 1] && TextFolding::SortKey(names_.At(files_[file])) < rest)
                result_.push_back(files_[file++]);
            below = Emit(below);
        }
        result_.insert(result_.end(), files_.begin() + file, files_.begin() + starts_[folder + 1]);
        return below;
    }

    const FoldedTexts& names_;
    std::span<const std::uint32_t> ranks_; ///< of the folders, by code
    std::vector<std::string> keys_;        ///< of the folders, by rank
    std::vector<std::uint32_t> starts_;    ///< where the files of each rank's folders begin in files_
    std::vector<std::uint32_t> files_;
    std::vector<std::uint32_t> result_;
};

} // namespace

std::vector<std::uint32_t> PathOrder(const TextDictionary& folders, std::span<const std::uint32_t> codes,
                                     const FoldedTexts& names) {
    return Merger(folders, codes, names).Run();
}

} // namespace kalvo
