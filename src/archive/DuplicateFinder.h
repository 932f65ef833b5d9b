#pragma once

#include "archive/ArchiveTask.h"
#include "archive/DuplicateReport.h"

namespace kalvo {

/**
 * Finds titles that are in the archive more than once. The groups are those that one record source per title would give
 * (ArchiveStatements::FileNameDuplicates, TitleDuplicates), in the order of DuplicateCandidates, but found together in
 * near-linear time. Nothing is searched while files are missing.
 */
class DuplicateFinder : public ArchiveTask {
    Q_OBJECT

public:
    explicit DuplicateFinder(Archive& archive, QObject* parent = nullptr) : ArchiveTask(archive, parent) {}

    /** Returns at once. Ignored while one runs. */
    void Start(DuplicateMode mode);

Q_SIGNALS:
    /** "Suche wird vorbereitet  12%", "Suche läuft  34%", with its percentage. */
    void Progress(const QString& text, int percent);
    void Finished(const kalvo::DuplicateReport& report);

private:
    std::function<void(BackgroundRun&)> Prepare() override;
    void TellAbandoned(bool cancelled) override;

    DuplicateMode mode_ = DuplicateMode::FileNames;
};

} // namespace kalvo
