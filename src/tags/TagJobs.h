#pragma once

#include "base/BackgroundWorker.h"
#include "tags/TagForm.h"

#include <QObject>
#include <QStringList>

namespace kalvo {

/** Reads and writes the tags of several files on a thread of its own, one after another. UI thread. */
class TagJobs : public QObject {
    Q_OBJECT

public:
    explicit TagJobs(QObject* parent = nullptr);
    /** What is being written is finished, what has not begun is not written. */
    ~TagJobs() override;

    /** Loaded() follows, with a form per path in their order; an earlier wish that is not done is dropped. */
    void Load(const QStringList& paths);
    /** Saved() follows per file, then Finished(). */
    void Save(const QStringList& paths, const TagEdit& edit);

Q_SIGNALS:
    void Loaded(const QList<kalvo::TagForm>& forms);
    void Saved(const kalvo::TagSaved& saved);
    void Finished();

private:
    int wish_ = 0; ///< number of the last Load()
    BackgroundWorker worker_;
};

} // namespace kalvo
