#include "tags/TagJobs.h"

#include "tags/clsAudioGenie.h"

namespace kalvo {

TagJobs::TagJobs(QObject* parent) : QObject(parent) {}
TagJobs::~TagJobs() = default;

void TagJobs::Load(const QStringList& paths) {
    const int wish = ++wish_;
    worker_.Do([this, wish, paths]() -> BackgroundWorker::Answer {
        clsAudioGenie tags;
        QList<TagForm> forms;
        for (const QString& path : paths)
            forms.append(ReadTagForm(tags, path));
        return [this, wish, forms] {
            if (wish == wish_)
                Q_EMIT Loaded(forms);
        };
    });
}

void TagJobs::Save(const QStringList& paths, const TagEdit& edit) {
    for (const QString& path : paths) {
        worker_.Do([this, path, edit]() -> BackgroundWorker::Answer {
            clsAudioGenie tags;
            return [this, saved = WriteTagEdit(tags, path, edit)] { Q_EMIT Saved(saved); };
        });
    }
    worker_.Do([this]() -> BackgroundWorker::Answer { return [this] { Q_EMIT Finished(); }; });
}

} // namespace kalvo
