#pragma once

#include "archive/ArchiveTask.h"

namespace kalvo {

/**
 * `BuildCategoryLists`: collects the distinct values of the five category fields and writes their files. Values are
 * compared letter for letter and stand in the order in which they are met when the titles are sorted by artist. The old
 * files stay until all five lists are complete.
 */
class CategoryBuild : public ArchiveTask {
    Q_OBJECT

public:
    enum class Outcome { Written, Cancelled, Failed };

    CategoryBuild(Archive& archive, const DataFolder& folder, QObject* parent = nullptr);

    /** Returns at once. Ignored while one runs. */
    void Start() { StartTask(); }

Q_SIGNALS:
    /** 0 to 100; shown followed by " %". */
    void Progress(int percent);
    /** reason: German, empty unless it failed. */
    void Finished(kalvo::CategoryBuild::Outcome outcome, const QString& reason);

private:
    std::function<void(BackgroundRun&)> Prepare() override;
    void TellAbandoned(bool cancelled) override;
    void Write(const std::vector<QStringList>& lists);

    DataFolder folder_;
};

} // namespace kalvo
