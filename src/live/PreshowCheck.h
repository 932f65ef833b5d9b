#pragma once

#include "base/BackgroundWorker.h"
#include "live/PreshowRules.h"

#include <QObject>
#include <QTimer>

#include <functional>

namespace kalvo {

class TitleInspector;

/**
 * Runs the pre-show check: asks the disks and decodes the titles in the background, one after another, and tells what
 * it knows as it comes. When the lists or the desk change meanwhile, Refresh() takes the new facts; what is known of a
 * title stays. UI thread.
 */
class PreshowCheck : public QObject {
    Q_OBJECT

public:
    /** facts: asked on the UI thread whenever they are needed; asks no disk. The inspector outlives this. */
    PreshowCheck(std::function<PreshowFacts()> facts, TitleInspector& inspector, QObject* parent = nullptr);
    ~PreshowCheck() override;

    /** Looks at everything; files that have not changed since the last time are known at once. */
    void Start();
    void Cancel();
    /** Something has changed: soon looked at again. Nothing happens before Start() or after Cancel(). */
    void Refresh();

    bool IsRunning() const { return running_; }
    /** Titles whose file has been looked at, of Count() different ones. */
    qsizetype Done() const { return answers_.titles.size(); }
    qsizetype Count() const { return paths_.size(); }
    const QList<PreshowFinding>& Findings() const { return findings_; }

Q_SIGNALS:
    /** By Start(), before it asks for the facts. */
    void Starting();
    /** Findings, progress or IsRunning() are others. */
    void Changed();

private:
    void TakeFacts();
    void RequestTitles();
    void AskDisks();
    void TakeTitle(const QString& path, const InspectedTitle& title);
    void Judge();

    std::function<PreshowFacts()> takeFacts_;
    TitleInspector& inspector_;
    PreshowFacts facts_;
    PreshowAnswers answers_;
    QSet<QString> paths_;
    QList<PreshowFinding> findings_;
    bool started_ = false;
    bool running_ = false;
    int disksRound_ = 0; ///< of the answer that is waited for
    QTimer refreshSoon_;
    QTimer judgeSoon_;
    BackgroundWorker disks_; ///< last: its jobs end before the rest goes
};

} // namespace kalvo
