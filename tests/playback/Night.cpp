#include "Night.h"

#include "WaveBytes.h"
#include "base/FaderLaw.h"
#include "playback/OfflineMix.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <malloc.h>
#include <unistd.h>

#include <cmath>
#include <deque>
#include <fstream>
#include <functional>
#include <numbers>
#include <random>

namespace kalvo::test {

namespace {

constexpr double kSilent = 0.001;       ///< height of a sample
constexpr double kLongestSilence = 0.2; ///< seconds
constexpr double kLargestBend = 0.002;
constexpr double kNightRate = 44100;
constexpr double kSwell = 0.02; ///< seconds
constexpr int kRowsAhead = 5;
/** A shuffled list puts it last. */
const QString kLastKey = QStringLiteral("9999");

struct Kind {
    double seconds;
    int rate; ///< Hz
    int channels;
};
constexpr Kind kKinds[] = {{0.5, 44100, 2}, {0.6, 48000, 1}, {1.2, 22050, 1}, {2, 44100, 1},  {4, 44100, 2},
                           {8, 48000, 2},   {15, 44100, 1},  {30, 22050, 1},  {62, 11025, 1}, {119, 11025, 1},
                           {200, 11025, 1}, {333, 8000, 1},  {600, 8000, 1}};

QByteArray Wave(const Kind& kind, double frequency) {
    std::vector<qint16> samples;
    for (int frame = 0; frame < static_cast<int>(kind.seconds * kind.rate); ++frame) {
        const double second = static_cast<double>(frame) / kind.rate;
        const double edge = std::min({1.0, second / kSwell, (kind.seconds - second) / kSwell});
        const double swell = 0.5 - 0.5 * std::cos(std::numbers::pi * edge);
        const double sample = 13000 * swell * std::sin(2 * std::numbers::pi * frequency * second);
        samples.insert(samples.end(), static_cast<std::size_t>(kind.channels), static_cast<qint16>(sample));
    }
    return WaveBytes(kind.rate, kind.channels, samples);
}

void WriteFile(const QString& path, const QByteArray& content) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        throw std::runtime_error("no room for the night's titles");
}

std::size_t ResidentBytes() {
    ::malloc_trim(0);
    std::ifstream file("/proc/self/statm");
    std::size_t all = 0, resident = 0;
    file >> all >> resident;
    return resident * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

} // namespace

class Night::Desk {
public:
    Desk(std::unique_ptr<audio::AudioLibrary> library, unsigned seed)
        : folder_(disk_.filePath(QStringLiteral("Musik"))), chance_(seed), random_(seed), layer_(std::move(library)) {
        // What files are read into goes back to the system at once: memory that stays is memory that is held.
        ::mallopt(M_MMAP_THRESHOLD, 16384);
        if (!layer_.InitAudio(audio::kOffline, 1024))
            throw std::runtime_error("no output");
        MakeFiles();
        HoldEmergency();
        QObject::connect(&mixer_, &Mixer::TitleStarted, &mixer_, [this] { ++report_.titles; });
        QObject::connect(&mixer_, &Mixer::Message, &mixer_, [this](const QString& text) {
            report_.rescues += text.startsWith(QStringLiteral("Der Notfalltitel spielt")) ? 1 : 0;
        });
    }

    NightReport Run(double seconds) {
        end_ = seconds;
        report_ = {};
        FillLists();
        mixer_.Play(1, -1);
        const auto listen = [this](const float* stereo, std::size_t frames) { return Listen(stereo, frames); };
        while (mix_.Seconds() < end_)
            mix_.Run(listen);
        mend_ = nullptr;
        Rest(report_.memoryLate);
        while (resting_)
            mix_.Run(listen);
        report_.seconds = mix_.Seconds();
        return report_;
    }

private:
    struct Act {
        const char* name;
        std::function<void()> run;
    };

    void MakeFiles() {
        QDir().mkpath(folder_);
        double frequency = 60;
        for (const Kind& kind : kKinds) {
            frequency += 10;
            files_.push_back(folder_ + QStringLiteral("/%1.wav").arg(kind.seconds));
            WriteFile(files_.back(), Wave(kind, frequency));
        }
        WriteFile(folder_ + QStringLiteral("/kaputt.wav"), QByteArray(5000, 'x'));
    }

    void HoldEmergency() {
        const QByteArray wave = Wave({7, 22050, 1}, 90);
        const auto* bytes = reinterpret_cast<const std::byte*>(wave.constData());
        EmergencyTitle emergency;
        emergency.title.title = QStringLiteral("Not");
        emergency.file = std::make_shared<std::vector<std::byte>>(bytes, bytes + wave.size());
        mixer_.SetEmergency(emergency);
    }

    /** Short titles are drawn more often than long ones, some are missing or broken. */
    PlaylistEntry RandomEntry() {
        PlaylistEntry entry;
        const int draw = UpTo(19);
        const auto which = static_cast<std::size_t>(std::min(UpTo(12), UpTo(17)));
        entry.path = draw == 0   ? folder_ + QStringLiteral("/fehlt.mp3")
                     : draw == 1 ? folder_ + QStringLiteral("/kaputt.wav")
                                 : files_[which];
        entry.title = entry.path.section(u'/', -1);
        if (UpTo(9) == 0)
            entry.info = QStringLiteral("0.3"); // a cue point
        return entry;
    }

    /** There is always more to come; what has been played does not pile up. */
    void FillLists() {
        for (const int player : {1, 2}) {
            Playlist& list = List(player);
            while (list.CurrentRow() > 40)
                list.Remove({0});
            while (list.Count() - list.CurrentRow() <= kRowsAhead) {
                PlaylistEntry entry = RandomEntry();
                entry.shuffleKey = kLastKey;
                list.Append({entry});
            }
        }
    }

    bool Listen(const float* stereo, std::size_t frames) {
        for (std::size_t i = 0; i < frames; ++i) {
            const float left = stereo[2 * i];
            Judge(std::abs(left - 2 * before_[0] + before_[1]), std::abs(left) < kSilent);
            before_[1] = std::exchange(before_[0], left);
        }
        LiveOn();
        return resting_ || mix_.Seconds() < end_;
    }

    void Judge(double bend, bool isQuiet) {
        report_.largestBend = std::max(report_.largestBend, bend);
        if (bend > kLargestBend)
            NoteFault(QStringLiteral("bend of %1").arg(bend));
        quiet_ = isQuiet && !mend_ ? quiet_ + 1 : 0;
        report_.longestSilence = std::max(report_.longestSilence, quiet_ / kNightRate);
        if (quiet_ == static_cast<int>(kLongestSilence * kNightRate))
            NoteFault(QStringLiteral("silence"));
    }

    void NoteFault(const QString& fault) {
        report_.faults.append(QStringLiteral("%1 s: %2 after %3")
                                  .arg(mix_.Seconds())
                                  .arg(fault, QStringList(lastActs_.begin(), lastActs_.end()).join(u' ')));
    }

    void LiveOn() {
        const double now = mix_.Seconds();
        if (mend_ && now >= mendAt_)
            std::exchange(mend_, nullptr)();
        if (diskBack_ > 0 && now >= diskBack_) {
            QDir().rename(disk_.filePath(QStringLiteral("fort")), folder_);
            diskBack_ = 0;
            Note("Platte wieder da");
        }
        if (!resting_)
            FillLists();
        if (mend_ || now < nextAct_)
            return;
        nextAct_ = now + 0.05 + UpTo(800) * UpTo(1000) / 80000.0;
        ++report_.acts;
        if (report_.memoryEarly == 0 && now > end_ / 4)
            return Rest(report_.memoryEarly);
        const int player = 1 + UpTo(1);
        const int draw = UpTo(13);
        if (draw < 2)
            SilenceAndMend(player);
        else if (draw < 3)
            ChangeOptions();
        else if (draw < 6)
            ActOnList(List(player));
        else if (draw < 7)
            UpTo(4) == 0 ? PullDisk() : mixer_.SetMasterVolume(40 + UpTo(60));
        else
            ActOnPlayer(player);
    }

    void Do(const std::vector<Act>& acts) {
        const Act& act = acts[static_cast<std::size_t>(UpTo(static_cast<int>(acts.size()) - 1))];
        Note(act.name);
        act.run();
    }

    void ActOnPlayer(int player) {
        const double length = layer_.LengthSeconds(player);
        Do({{"nächster", [&] { mixer_.Next(player); }},
            {"Zeile", [&] { mixer_.Play(player, UpTo(List(player).Count() - 1)); }},
            {"überblenden", [&] { mixer_.FadeTo(player, -1); }},
            {"überblenden", [&] { mixer_.FadeTo(player, -1); }},
            {"springen", [&] { mixer_.SeekSeconds(player, length * UpTo(100) / 100); }},
            {"zum Ende springen", [&] { mixer_.SeekSeconds(player, length - 12); }},
            {"Tonhöhe", [&] { mixer_.SetPitch(player, UpTo(240) - 120); }}});
    }

    void ActOnList(Playlist& list) {
        const int row = UpTo(list.Count() - 1);
        Do({{"Liste leeren", [&] { list.Clear(); }},
            {"mischen", [&] { list.Shuffle(); }},
            {"als nächstes", [&] { list.MarkPlayNext(row); }},
            {"verschieben", [&] { list.Move({row}, UpTo(list.Count())); }},
            {"einfügen", [&] { list.Insert(row, {RandomEntry()}); }},
            {"entfernen", [&] { list.Remove({row}); }}});
    }

    void ChangeOptions() {
        Note("Optionen");
        constexpr int switchOvers[] = {0, 2, 9, 30};
        MixerOptions options = mixer_.Options();
        options.mode = UpTo(3) == 0 ? FadeMode::NoFading : FadeMode::FadeCrossOver;
        options.fadeInterval = kFadeSpeeds.at(static_cast<std::size_t>(UpTo(4))).interval;
        options.switchOver = switchOvers[UpTo(3)];
        options.removePlayed = UpTo(1) == 0;
        options.preload = UpTo(3) != 0;
        options.automatic = UpTo(4) != 0;
        mixer_.SetOptions(options);
    }

    void SetContinuous(bool continuous) {
        MixerOptions options = mixer_.Options();
        options.continuous = continuous;
        mixer_.SetOptions(options);
    }

    void SilenceAndMend(int player) {
        const struct {
            const char* name;
            std::function<void()> silence, mend;
        } ways[] = {
            {"Pause", [=, this] { mixer_.Pause(player); }, [=, this] { PressPlay(player); }},
            {"Stop", [=, this] { mixer_.Stop(player); },
             [=, this] {
                 mixer_.FadeTo(player, -1);
                 PressPlay(player);
             }},
            {"stumm", [=, this] { mixer_.ToggleMute(player); }, [=, this] { mixer_.ToggleMute(player); }},
            {"Regler", [=, this] { mixer_.SetFader(UpTo(200) - 100); }, [=, this] { FaderToMusic(); }},
            {"nicht weiter", [=, this] { SetContinuous(false); },
             [=, this] {
                 SetContinuous(true);
                 PressPlay(player);
             }},
        };
        const auto& way = ways[UpTo(4)];
        way.silence();
        MendLater(way.name, way.mend);
    }

    void FaderToMusic() {
        if (const int onAir = mixer_.OnAirPlayer(); onAir != 0)
            mixer_.SetFader(FaderEndOf(onAir));
    }

    /** Until something is heard: the title that is asked for may be broken, or play on the side that is faded out. */
    void PressPlay(int player) {
        if (layer_.Activity(player) == audio::Activity::Paused || mixer_.OnAirPlayer() == 0)
            mixer_.Play(player, -1);
        if (mixer_.OnAirPlayer() == 0)
            mixer_.Next(player);
        else if (FaderVolume(mixer_.OnAirPlayer(), mixer_.Fader()) == 0)
            FaderToMusic();
    }

    /** No title can be opened for a while; those that play have most of themselves in memory. */
    void PullDisk() {
        if (diskBack_ > 0)
            return;
        Note("Platte fort");
        QDir().rename(folder_, disk_.filePath(QStringLiteral("fort")));
        diskBack_ = mix_.Seconds() + 5 + UpTo(40);
    }

    void MendLater(const char* act, std::function<void()> mend) {
        Note(act);
        mend_ = std::move(mend);
        mendAt_ = mix_.Seconds() + 0.05 + UpTo(295) / 100.0;
    }

    void Rest(std::size_t& memory) {
        resting_ = true;
        for (const int player : {1, 2}) {
            mixer_.Stop(player);
            List(player).Clear();
            layer_.Prepare(player, {});
        }
        MendLater("Rast", [this, &memory] {
            memory = ResidentBytes();
            resting_ = false;
            FillLists();
            PressPlay(1);
        });
    }

    void Note(const char* act) {
        lastActs_.push_back(QStringLiteral("[%1 %2]").arg(mix_.Seconds()).arg(QString::fromUtf8(act)));
        if (lastActs_.size() > 6)
            lastActs_.pop_front();
    }

    int UpTo(int most) { return static_cast<int>(chance_() % static_cast<unsigned>(most + 1)); }
    Playlist& List(int player) { return player == 1 ? list1_ : list2_; }

    QTemporaryDir disk_;
    QString folder_; ///< of the titles
    std::vector<QString> files_;
    std::mt19937 chance_;
    SystemRandom random_;
    AudioLayer layer_;
    Playlist list1_{1, random_}, list2_{2, random_};
    Mixer mixer_{layer_, list1_, list2_};
    OfflineMix mix_{mixer_};
    NightReport report_;
    double end_ = 0;
    double nextAct_ = 1;
    double diskBack_ = 0; ///< when it is plugged in again; 0 = it is there
    std::function<void()> mend_;
    double mendAt_ = 0;
    bool resting_ = false;
    int quiet_ = 0; ///< frames without sound up to now
    float before_[2] = {};
    std::deque<QString> lastActs_;
};

Night::Night(std::unique_ptr<audio::AudioLibrary> library, unsigned seed)
    : desk_(std::make_unique<Desk>(std::move(library), seed)) {}

Night::~Night() = default;

NightReport Night::Run(double seconds) {
    return desk_->Run(seconds);
}

} // namespace kalvo::test
