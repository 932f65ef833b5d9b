#pragma once

#include <QString>

#include <vector>

namespace kalvo {

enum class DuplicateMode {
    FileNames, ///< "Datei-Namen": the name with its extension, anywhere in a path
    TagTitles  ///< "Titel des ID3Tag": the whole title, without case
};

struct DuplicateReport {
    enum class Outcome {
        Found,      ///< searched to the end; there may be no group
        StalePaths, ///< nothing was searched: titles without a file are to be deleted first
        NoTitles,   ///< "Suche nicht möglich"
        Cancelled,
        Failed ///< the archive could not be read
    };
    Outcome outcome = Outcome::Failed;
    /**
     * `Nr` of the titles found, group by group with a 0 after each; a title stands in one group only, the first that
     * holds it. With StalePaths those whose files are missing, without any 0.
     */
    std::vector<qint64> rows;

    /** Rows but those of 0. */
    int Titles() const;
};

/** Texts of the duplicate window. */
namespace DuplicateTexts {

/** "Suche wird vorbereitet  12%", "Suche läuft  34%". */
QString Preparing(int percent);
QString Searching(int percent);
/** Text of the message box "Hinweis" for this many stale titles. */
QString StaleMessage(qsizetype titles);
/** Text of `lblHinweis` after a search; empty when there is nothing to say. */
QString Hint(DuplicateMode mode, const DuplicateReport& report);
/** "12.3 KB". */
QString Size(qint64 bytes);
/** Of a file; "0.0 KB" when it cannot be found. */
QString SizeOf(const QString& path);

} // namespace DuplicateTexts

} // namespace kalvo
