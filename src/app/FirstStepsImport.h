#pragma once

#include "archive/BackgroundRun.h"
#include "archive/TitleImport.h"

#include <QObject>

#include <functional>
#include <memory>

namespace kalvo {

/** Brings a whole folder into the archive in one go: looks for its music on a thread of its own, then imports it. */
class FirstStepsImport : public QObject {
    Q_OBJECT

public:
    /** The archive outlives it. */
    explicit FirstStepsImport(Archive& archive, QObject* parent = nullptr);
    ~FirstStepsImport() override;

    /** Ignored while one runs. */
    void Start(const QString& folder);
    /** The same with titles that are only written now; write: on a thread of its own, gives their paths. */
    void Start(const std::function<QStringList()>& write);
    /** What is in the archive by then stays; Finished() follows within the call. */
    void Cancel();
    bool IsRunning() const { return search_ != nullptr || import_.IsRunning(); }

Q_SIGNALS:
    /** What it is doing, for the user. */
    void Progress(const QString& text);
    /** text: what there is to tell. */
    void Finished(const QString& text);

private:
    void Import(const QStringList& files);
    void EndSearch();

    TitleImport import_;
    std::shared_ptr<BackgroundRun> search_; ///< null while nothing is searched
};

/** Whether there is music in the folder or below; looks at a limited number of files, so that no large tree delays. */
bool HoldsMusic(const QString& folder);

} // namespace kalvo
