#pragma once

#include "base/BackgroundWorker.h"
#include "playback/JointRenderer.h"

#include <QHash>
#include <QObject>
#include <QTimer>

#include <functional>
#include <optional>
#include <utility>

namespace kalvo {

class LengthCache;

/**
 * Plans the hand-overs to come and renders them in the background: the wanted one and the one behind it with their
 * sound, all others for what can be said of them. Only looks at the desk; plans anew after Refresh().
 *
 * Threads: everything here belongs to the UI thread. A worker behind all other threads plans and renders, one job at a
 * time, on copies, with decoders and a desk of its own, and answers by the event loop. At most kHeld sounds are kept.
 */
class Rehearsal : public QObject {
    Q_OBJECT

public:
    static constexpr qsizetype kHeld = 4;

    /** What is rehearsed. Called on the UI thread, `makeLibrary` on the worker's. */
    struct Source {
        std::function<DeskMoment()> moment;
        std::function<RehearsalSettings()> settings;
        std::function<std::unique_ptr<audio::AudioLibrary>()> makeLibrary;
    };

    explicit Rehearsal(Source source, QObject* parent = nullptr);
    ~Rehearsal() override;

    /** Plans and renders; again where it was stopped. */
    void Start();
    /** Gives up what runs; what is known stays, and what is wanted is still rendered. */
    void Stop();
    /** The lists, the settings or the players have changed. Nothing happens before the first Start(). */
    void Refresh();
    void SetMargins(const JointMargins& margins);
    /** This joint's sound is needed, and next the one behind it; -1: none. */
    void Want(int index);
    /** The row that it has in the present plan; -1: none. */
    int Wanted() const { return wanted_; }

    const QList<Joint>& Joints() const { return joints_; }
    bool IsPlanning() const { return planning_; }
    /** Something is being planned or rendered. */
    bool IsRunning() const { return running_; }
    /** Joints of which all is known. */
    int Done() const;
    /** None: not rendered yet. */
    std::optional<RenderedJoint> Known(int index) const;
    /** With its sound; a null one where it cannot be rendered. */
    std::optional<RenderedJoint> Sound(int index) const;

Q_SIGNALS:
    /** Joints() are others. */
    void Planned();
    /** Known() or Sound() of a joint has come. */
    void Rendered(int index);
    /** Progress or IsRunning() has changed. */
    void Progressed();

private:
    void Plan();
    void TakePlan(const QList<Joint>& joints);
    void Continue();
    int NextIndex() const;
    void Render(int index, bool withSound);
    void Take(const QString& key, const RenderedJoint& joint);
    void GiveUp();
    QString KeyOf(int index) const;

    Source source_;
    RehearsalSettings settings_; ///< of the plan
    JointMargins margins_;
    QList<Joint> joints_;
    QHash<QString, RenderedJoint> known_;             ///< without their sound, by KeyOf()
    QList<std::pair<QString, RenderedJoint>> sounds_; ///< the latest last
    int wanted_ = -1;
    bool started_ = false;
    bool planning_ = false;
    bool rendering_ = false;
    bool running_ = false;
    QTimer refreshSoon_;
    std::shared_ptr<LengthCache> lengths_; ///< the worker's
    std::shared_ptr<std::atomic<bool>> cancelled_ = std::make_shared<std::atomic<bool>>(false);
    BackgroundWorker worker_; ///< last: its jobs end before the rest goes
};

} // namespace kalvo
