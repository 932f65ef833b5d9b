#pragma once

#include <QtGlobal>

#include <utility>

namespace kalvo {

/**
 * Tells when what other programs have written into the archive is to be read: when they pause, for a whole index is
 * read anew, or at last after a dozen looks.
 */
class ForeignWrites {
public:
    /** Everything up to this version is being read. */
    void Read(qint64 version) {
        read_ = seen_ = version;
        looks_ = 0;
    }

    /** To be asked in even distances, with the archive's version now; see ArchiveDatabase::ForeignVersion(). */
    bool AreDue(qint64 version) {
        const bool paused = std::exchange(seen_, version) == version;
        looks_ = version == read_ ? 0 : looks_ + 1;
        return version != read_ && (paused || looks_ >= kPatience);
    }

    static constexpr int kPatience = 12; ///< looks

private:
    qint64 read_ = 0;
    qint64 seen_ = 0;
    int looks_ = 0;
};

} // namespace kalvo
