#pragma once

#include "archive/ArchiveSession.h"
#include "archive/FolderScan.h"

#include <QObject>
#include <QTimer>

#include <deque>
#include <memory>
#include <optional>

namespace kalvo {

/**
 * Texts of tags as fields hold them: in one line, since a line break parts the values of a category list, and cut, so
 * that no file is lost to a long one. A path stays as it is.
 */
void FitTagTexts(TitleRecord& record);

struct ImportReport {
    int marked = 0;  ///< files given
    int added = 0;   ///< N
    int present = 0; ///< K
    bool cancelled = false;
    QList<PassedOver> passedOver; ///< files that could not be taken

    /** "N von M Songs hinzugefügt, K Titel waren bereits vorhanden". */
    QString Text() const;
};

struct ImportProgress {
    int done = 0; ///< files finished, this one included
    int marked = 0;
    QString path;       ///< the file just finished
    TitleRecord record; ///< what was read from it; empty when it was present already or passed over
};

class TagReaders;
struct ReadTitle;

/**
 * Adds files to the archive, in the order of the list: one record per file that it does not hold yet. The tags are read
 * ahead by a few threads of its own; duplicate checks and writing stay on the UI thread, in short turns of the event
 * loop, so windows stay alive. Not shown by the archive before its next Refresh().
 */
class TitleImport : public QObject {
    Q_OBJECT

public:
    /** The archive outlives the import. */
    explicit TitleImport(Archive& archive, QObject* parent = nullptr);
    /** An import that runs is cancelled. */
    ~TitleImport() override;

    /** Returns at once; Progress() follows per file, Finished() at the end. Ignored while one runs. */
    void Start(const QStringList& paths);
    /** What was added stays; Finished() follows within the call. */
    void Cancel();
    bool IsRunning() const { return readers_ != nullptr; }

    /** The same without an event loop, for the command line: waits for the index, then for every file. */
    ImportReport Run(const QStringList& paths);

Q_SIGNALS:
    void Progress(const kalvo::ImportProgress& progress);
    void Finished(const kalvo::ImportReport& report);

private:
    /** A file of the list on its way. */
    struct Awaited {
        QString path;
        bool read = false; ///< false: the archive held it already, nothing is read
    };

    void Begin(const QStringList& paths);
    void Turn();
    bool Advance(bool wait);
    void Feed();
    void TakeFile(const QString& path, std::optional<ReadTitle> title);
    void PassOverRest(const QString& reason);
    void Finish(bool cancelled);

    Archive& archive_;
    QTimer turns_;
    QStringList paths_;
    qsizetype fed_ = 0; ///< paths that have become awaited files
    std::deque<Awaited> awaited_;
    ImportReport report_;
    std::unique_ptr<TagReaders> readers_;
    std::unique_ptr<Archive::Session> session_;
};

} // namespace kalvo
