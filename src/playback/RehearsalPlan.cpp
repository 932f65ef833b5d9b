#include "playback/RehearsalPlan.h"

#include "base/FileName.h"
#include "playback/PlayerRecord.h"
#include "playback/TimelineAudio.h"

#include <QStringList>

#include <algorithm>

namespace kalvo {

namespace {

constexpr double kStep = 0.1;          // s, the interval of CheckHandOver
constexpr double kBeforeEnd = 2;       // s before a hand-over from which on every step is made
constexpr double kPlanSilence = 3;     // s after which nothing begins any more
constexpr double kLongest = 7 * 86400; // s
constexpr qsizetype kMostJoints = 10000;

/** Plays the night and writes down where titles begin. */
class Night {
public:
    Night(const DeskMoment& now, const RehearsalSettings& settings,
          const std::function<double(const std::string& path)>& length)
        : Night(std::make_unique<TimelineAudio>(length), now, settings) {}

    QList<Joint> Play(const std::atomic<bool>& cancelled, const std::function<void(int joints)>& told);

private:
    Night(std::unique_ptr<TimelineAudio> library, const DeskMoment& now, const RehearsalSettings& settings)
        : library_(*library),
          switchOver_(settings.mixing.switchOver),
          fadeInterval_(settings.mixing.fadeInterval / 1000.0),
          desk_(std::move(library), settings) {
        desk_.Begin(now);
        QObject::connect(&desk_.mixer, &Mixer::TitleStarted, [this](int player) { started_.append(player); });
        QObject::connect(&desk_.mixer, &Mixer::HandOverBegan, [this](int player) {
            fades_ = true;
            if (!started_.contains(player))
                started_.append(player);
        });
        QObject::connect(&desk_.mixer, &Mixer::Finished, [this] { finished_ = true; });
    }

    double StepLength();
    void Step();
    void Note(const DeskMoment& before, int onAir);
    void EndFade();

    TimelineAudio& library_;
    int switchOver_;
    double fadeInterval_;
    RehearsalDesk desk_;
    double time_ = 0;
    double fadeTime_ = 0; ///< that the fader has not used yet
    double silent_ = 0;
    double fadeBegan_ = -1;
    QList<int> started_; ///< players, in this step
    bool fades_ = false;
    bool finished_ = false;
    QList<Joint> joints_;
};

/** What lies between two hand-overs is passed in one step. */
double Night::StepLength() {
    const MixState state = desk_.mixer.State();
    if (state.fadeStep != 0 || OnAir(state) == 0)
        return kStep;
    double room = kLongest;
    for (const int player : {1, 2}) {
        if (!state.Deck(player).playing)
            continue;
        const double left = desk_.mixer.Title(player).length - desk_.mixer.PositionSeconds(player);
        room = std::min(room, left / PitchRatio(desk_.mixer.Pitch(player)));
    }
    return std::max(kStep, room - switchOver_ * (1 + 0.2) - kBeforeEnd);
}

void Night::Step() {
    const double seconds = StepLength();
    library_.Advance(seconds);
    time_ += seconds;
    fadeTime_ = std::min(fadeTime_ + seconds, kStep + fadeInterval_);
    desk_.mixer.Dispatch();
    desk_.mixer.CheckHandOver();
    for (; fadeTime_ >= fadeInterval_; fadeTime_ -= fadeInterval_)
        desk_.mixer.StepFade();
    silent_ = desk_.mixer.OnAirPlayer() == 0 ? silent_ + seconds : 0;
}

void Night::Note(const DeskMoment& before, int onAir) {
    if (started_.isEmpty() || onAir == 0)
        return;
    if (before.fadeTarget == 0 || joints_.isEmpty()) {
        Joint joint;
        joint.kind = fades_ ? Joint::Kind::Fade : started_[0] == onAir ? Joint::Kind::Continue : Joint::Kind::Jump;
        joint.titles = {before.At(onAir).title};
        joint.at = time_;
        joint.before = before;
        joints_.append(joint);
        fadeBegan_ = fades_ ? time_ : -1;
    }
    for (const int player : std::as_const(started_))
        joints_.last().titles.append(desk_.mixer.Title(player));
}

void Night::EndFade() {
    if (fadeBegan_ >= 0 && !joints_.isEmpty() && desk_.mixer.State().fadeStep == 0) {
        joints_.last().fade = time_ - fadeBegan_;
        fadeBegan_ = -1;
    }
}

QList<Joint> Night::Play(const std::atomic<bool>& cancelled, const std::function<void(int joints)>& told) {
    qsizetype before = 0;
    while (!cancelled && !finished_ && silent_ < kPlanSilence && time_ < kLongest && joints_.size() < kMostJoints) {
        const DeskMoment moment = desk_.Now();
        const int onAir = desk_.mixer.OnAirPlayer();
        started_.clear();
        fades_ = false;
        Step();
        Note(moment, onAir);
        EndFade();
        if (told && joints_.size() != before)
            told(static_cast<int>(before = joints_.size()));
    }
    return joints_;
}

} // namespace

QString Joint::NameOf(qsizetype index) const {
    const DeckTitle& title = titles.at(index);
    const QString name = title.title.isEmpty() ? FileName::Last(title.path) : title.title;
    return title.artist.isEmpty() ? name : title.artist + QStringLiteral(" - ") + name;
}

QString Joint::Text() const {
    QStringList names;
    for (qsizetype index = 0; index < titles.size(); ++index)
        names.append(NameOf(index));
    return names.join(QStringLiteral(" → "));
}

QString Joint::Key() const {
    QStringList parts{QString::number(int(kind))};
    for (const DeckTitle& title : titles)
        parts.append(title.path + u'@' + QString::number(title.cue));
    for (const DeskMoment::Deck& deck : before.decks)
        parts.append(QString::number(deck.pitch));
    return parts.join(u'\n');
}

QList<Joint> PlanJoints(const DeskMoment& now, const RehearsalSettings& settings,
                        const std::function<double(const std::string& path)>& length,
                        const std::atomic<bool>& cancelled, const std::function<void(int joints)>& told) {
    return Night(now, settings, length).Play(cancelled, told);
}

} // namespace kalvo
