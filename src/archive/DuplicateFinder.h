#pragma once

#include "archive/Archive.h"

#include <QList>

#include <memory>

namespace kalvo {

enum class DuplicateMode {
    FileNames, ///< "Datei-Namen": the name with its extension, anywhere in a path
    TagTitles  ///< "Titel des ID3Tag": the whole title, without case
};

struct DuplicateReport {
    enum class Outcome {
        Found,      ///< searched to the end; groups may be empty
        StalePaths, ///< nothing was searched: titles without a file are to be deleted first
        NoTitles,   ///< "Suche nicht möglich"
        Cancelled,
        Failed ///< the archive could not be read
    };
    Outcome outcome = Outcome::Failed;
    QList<QList<TitleRecord>> groups; ///< a title stands in one group only, the first that holds it
    QList<TitleRecord> stale;         ///< titles whose files are missing

    /** Titles in all groups. */
    int Titles() const;
};

/**
 * Finds titles that are in the archive more than once. The groups are those that one record source per title would give
 * (ArchiveStatements::FileNameDuplicates, TitleDuplicates), in that order, but found together in near-linear time.
 *
 * Runs on a thread of its own over a connection of its own; signals come on the UI thread by queued calls. A thread
 * that hangs in a dead file system is left behind and ends with it: neither Cancel() nor the destructor wait.
 */
class DuplicateFinder : public QObject {
    Q_OBJECT

public:
    /** The archive outlives the finder. */
    explicit DuplicateFinder(Archive& archive, QObject* parent = nullptr);
    /** A search that runs is cancelled without a signal. */
    ~DuplicateFinder() override;

    /** Returns at once. Ignored while one runs. Waits for the archive's index. */
    void Start(DuplicateMode mode);
    /** Finished() with Cancelled follows within the call. */
    void Cancel();
    bool IsRunning() const { return run_ != nullptr; }

Q_SIGNALS:
    /** "Suche wird vorbereitet  12%", "Suche läuft  34%", with its percentage. */
    void Progress(const QString& text, int percent);
    void Finished(const kalvo::DuplicateReport& report);

private:
    struct Run;

    void Begin();

    Archive& archive_;
    DuplicateMode mode_ = DuplicateMode::FileNames;
    std::shared_ptr<Run> run_; ///< shared with its thread
};

/** Texts of the duplicate window. */
namespace DuplicateTexts {

/** Text of the message box "Hinweis" for this many stale titles. */
QString StaleMessage(int titles);
/** Text of `lblHinweis` after a search; for stale paths too. */
QString Hint(DuplicateMode mode, const DuplicateReport& report);
/** "12.3 KB"; the size of a file that cannot be found is "0.0 KB". */
QString Size(qint64 bytes);
QString SizeOf(const QString& path);

} // namespace DuplicateTexts

} // namespace kalvo
