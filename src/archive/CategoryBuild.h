#pragma once

#include "archive/Archive.h"

#include <QTimer>

namespace kalvo {

/**
 * `BuildCategoryLists`: collects the distinct values of the five category fields and writes their files. Values are
 * compared letter for letter and stand in the order in which they are met when the titles are sorted by artist. UI
 * thread, in short turns of the event loop over a connection of its own. The old files stay until all five lists are
 * complete.
 */
class CategoryBuild : public QObject {
    Q_OBJECT

public:
    enum class Outcome { Written, Cancelled, Failed };

    /** The archive outlives the build. */
    CategoryBuild(Archive& archive, const DataFolder& folder, QObject* parent = nullptr);
    /** A build that runs is cancelled without a signal. */
    ~CategoryBuild() override;

    /** Returns at once; waits for the archive's index. Ignored while one runs. */
    void Start();
    /** Finished() follows within the call. */
    void Cancel();
    bool IsRunning() const { return run_ != nullptr; }

    /** The same without an event loop: the command line, tests. */
    Outcome Run();

Q_SIGNALS:
    /** 0 to 100; shown followed by " %". */
    void Progress(int percent);
    /** reason: German, empty unless it failed. */
    void Finished(kalvo::CategoryBuild::Outcome outcome, const QString& reason);

private:
    struct Collected;

    void Turn();
    bool Advance();
    bool Begin();
    bool WriteFiles() const;
    void Finish(Outcome outcome, const QString& reason);

    Archive& archive_;
    DataFolder folder_;
    QTimer turns_;
    std::unique_ptr<Collected> run_;
    Outcome outcome_ = Outcome::Cancelled;
};

} // namespace kalvo
