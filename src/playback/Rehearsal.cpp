#include "playback/Rehearsal.h"

#include "base/BackgroundPriority.h"
#include "playback/LengthCache.h"

#include <algorithm>
#include <utility>

namespace kalvo {

namespace {

constexpr int kRefreshAfter = 600; // ms

} // namespace

Rehearsal::Rehearsal(Source source, QObject* parent)
    : QObject(parent), source_(std::move(source)), lengths_(std::make_shared<LengthCache>()) {
    refreshSoon_.setSingleShot(true);
    refreshSoon_.setInterval(kRefreshAfter);
    connect(&refreshSoon_, &QTimer::timeout, this, &Rehearsal::Plan);
    worker_.Do([] {
        StepBehindMusic();
        return BackgroundWorker::Answer();
    });
}

Rehearsal::~Rehearsal() {
    *cancelled_ = true;
}

void Rehearsal::Start() {
    started_ = true;
    Plan();
}

void Rehearsal::Stop() {
    started_ = false;
    wanted_ = -1;
    refreshSoon_.stop();
    GiveUp();
    Q_EMIT Progressed();
}

void Rehearsal::Refresh() {
    if (started_)
        refreshSoon_.start();
}

void Rehearsal::SetMargins(const JointMargins& margins) {
    if (std::exchange(margins_, margins) == margins)
        return;
    sounds_.clear();
    Want(wanted_);
}

void Rehearsal::GiveUp() {
    *cancelled_ = true;
    cancelled_ = std::make_shared<std::atomic<bool>>(false);
    worker_.DropWaiting();
    planning_ = rendering_ = running_ = false;
}

void Rehearsal::Plan() {
    GiveUp();
    settings_ = source_.settings();
    planning_ = true;
    running_ = true;
    worker_.Do([this, now = source_.moment(), settings = settings_, lengths = lengths_,
                cancelled = cancelled_]() -> BackgroundWorker::Answer {
        const QList<Joint> joints = PlanJoints(
            now, settings, [&](const std::string& path) { return *cancelled ? 0 : lengths->Of(path); }, *cancelled);
        if (*cancelled)
            return {};
        return [this, joints, cancelled] {
            if (!*cancelled)
                TakePlan(joints);
        };
    });
    Q_EMIT Progressed();
}

/** The wanted joint keeps its place in mind by what it is, not by its row. */
void Rehearsal::TakePlan(const QList<Joint>& joints) {
    const QString wanted = wanted_ >= 0 && wanted_ < joints_.size() ? joints_.at(wanted_).Key() : QString();
    planning_ = false;
    joints_ = joints;
    const auto found =
        std::find_if(joints_.begin(), joints_.end(), [&wanted](const Joint& joint) { return joint.Key() == wanted; });
    wanted_ = wanted.isEmpty() || found == joints_.end() ? -1 : static_cast<int>(found - joints_.begin());
    Q_EMIT Planned();
    Continue();
}

void Rehearsal::Want(int index) {
    wanted_ = index;
    if (planning_)
        return;
    if (index >= 0 && !Sound(index))
        GiveUp(); // what is rendered now can wait
    Continue();
}

/** The wanted joint and the one behind it with their sound, then whatever is not known. -1: all is. */
int Rehearsal::NextIndex() const {
    const int count = static_cast<int>(joints_.size());
    for (int index = std::max(0, wanted_); index < std::min(count, wanted_ + 2); ++index) {
        if (wanted_ >= 0 && !Sound(index))
            return index;
    }
    for (int index = 0; started_ && index < count; ++index) {
        if (!Known(index))
            return index;
    }
    return -1;
}

void Rehearsal::Continue() {
    if (planning_ || rendering_)
        return;
    const int index = NextIndex();
    running_ = rendering_ = index >= 0;
    if (rendering_)
        Render(index, wanted_ >= 0 && (index == wanted_ || index == wanted_ + 1));
    Q_EMIT Progressed();
}

void Rehearsal::Render(int index, bool withSound) {
    worker_.Do([this, joint = joints_.at(index), key = KeyOf(index), withSound, settings = settings_,
                margins = margins_, makeLibrary = source_.makeLibrary,
                cancelled = cancelled_]() -> BackgroundWorker::Answer {
        RenderedJoint rendered = RenderJoint(joint, settings, margins, makeLibrary(), *cancelled);
        if (*cancelled)
            return {};
        if (!withSound)
            rendered.sound.reset();
        return [this, key, rendered, withSound, cancelled] {
            if (*cancelled)
                return;
            rendering_ = false;
            if (withSound) {
                sounds_.append({key, rendered});
                while (sounds_.size() > kHeld)
                    sounds_.removeFirst();
            }
            Take(key, rendered);
        };
    });
}

void Rehearsal::Take(const QString& key, const RenderedJoint& joint) {
    RenderedJoint silent = joint;
    silent.sound.reset();
    silent.wave.reset();
    known_.insert(key, silent);
    for (int index = 0; index < joints_.size(); ++index) {
        if (KeyOf(index) == key)
            Q_EMIT Rendered(index);
    }
    Continue();
}

/** All that makes the joint sound as it does; titles may have been measured, or levelling switched, since. */
QString Rehearsal::KeyOf(int index) const {
    const Joint& joint = joints_.at(index);
    QString key = joint.Key() + settings_.Fingerprint();
    for (const DeckTitle& title : joint.titles)
        key += u'\n' + QString::number(settings_.gains.value(title.path, 0));
    return key;
}

int Rehearsal::Done() const {
    int done = 0;
    for (int index = 0; index < joints_.size(); ++index)
        done += Known(index) ? 1 : 0;
    return done;
}

std::optional<RenderedJoint> Rehearsal::Known(int index) const {
    if (index < 0 || index >= joints_.size())
        return std::nullopt;
    const auto found = known_.constFind(KeyOf(index));
    return found == known_.constEnd() ? std::nullopt : std::optional(*found);
}

std::optional<RenderedJoint> Rehearsal::Sound(int index) const {
    if (index < 0 || index >= joints_.size())
        return std::nullopt;
    const QString key = KeyOf(index);
    for (const auto& [name, sound] : sounds_) {
        if (name == key)
            return sound;
    }
    return std::nullopt;
}

} // namespace kalvo
