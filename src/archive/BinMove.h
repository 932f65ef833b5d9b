#pragma once

#include "archive/ArchiveDatabase.h"

#include <QObject>

#include <memory>

namespace kalvo {

class Archive;
class BackgroundRun;

/** What became of titles whose files were to go into the bin. */
struct BinReport {
    QList<qint64> numbers; ///< of titles whose file is in the bin, or which were gone themselves or without a file
    QStringList kept;      ///< files that the bin refused; their titles stay
    WriteResult deleted;
};

/**
 * Deletes titles together with their files. Those go into the desktop's bin, one by one, by a thread: their disk may be
 * slow, and the desk has music to hand over. When all are there their titles leave the archive as one deletion, which
 * can be undone. Where the archive refuses, the files come back.
 *
 * UI thread. The archive outlives this.
 */
class BinMove : public QObject {
    Q_OBJECT

public:
    explicit BinMove(Archive& archive);
    ~BinMove() override;

    /** False, and nothing happens, while one runs. */
    bool Start(const QList<qint64>& numbers);
    bool IsRunning() const { return run_ != nullptr; }
    /** Stops after the file that is under way: the titles of those that are in the bin are deleted. So does the end. */
    void Finish();

Q_SIGNALS:
    void Progress(qsizetype done, qsizetype files);
    /** Never within Start(). The archive shows its new rows. */
    void Ended(const kalvo::BinReport& report);

private:
    struct Files;
    BinReport Delete();

    Archive& archive_;
    std::shared_ptr<Files> files_;       ///< shared with the thread
    std::shared_ptr<BackgroundRun> run_; ///< null when idle
};

} // namespace kalvo
