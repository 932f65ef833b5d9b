#pragma once

#include "base/FaderLaw.h"
#include "playback/AudioLayer.h"
#include "playback/CrossFader.h"
#include "playback/DeckData.h"
#include "playback/DeckTitles.h"
#include "playback/EmergencyTitle.h"
#include "playback/FileProbe.h"
#include "playback/HandOver.h"
#include "playback/MixerOptions.h"
#include "playback/MixerSignals.h"
#include "playback/StandstillWatch.h"
#include "playlists/Playlist.h"

#include <array>
#include <chrono>
#include <functional>

namespace kalvo {

/**
 * The two players, their lists and the cross-fader between them: transport, fades, the automatic hand-over and the rule
 * that the music never stops by itself. UI thread. Has no timers of its own: the owner calls CheckHandOver every 100
 * ms, StepFade in the interval of the fade speed, Dispatch every 50 ms; an offline renderer calls them in its own time.
 * Players count 1 and 2; others are a bounds error. Layer and lists outlive it.
 *
 * A file that does not open at once starts as soon as it does: meanwhile the player counts as opening, a fade towards
 * it waits, and after three seconds what was started by itself goes on with the next title. Music that stands still for
 * two seconds goes on with the next title of either list, in the end with the emergency title.
 */
class Mixer : public MixerSignals {
    Q_OBJECT

public:
    Mixer(AudioLayer& layer, Playlist& list1, Playlist& list2, QObject* parent = nullptr);
    ~Mixer() override;

    const MixerOptions& Options() const { return options_; }
    void SetOptions(const MixerOptions& options);
    /** Whether players start at an entry's cue point. */
    void SetUseCuePoints(bool use) { useCuePoints_ = use; }
    /** What plays when nothing else can. */
    void SetEmergency(const EmergencyTitle& title) { emergency_ = title; }
    /** Gives the gain in dB that a title starts with, besides fader and volumes; none unless set. */
    void SetTitleGain(std::function<double(const QString& path)> gain) { titleGain_ = std::move(gain); }
    /** Whether there is such a file; true when its disk does not answer in time: opening it will tell. */
    bool HasFile(const QString& path) { return files_.Exists(path); }
    /** How long a start may hold up the caller for its file; 40 ms unless set. */
    void SetPatience(std::chrono::milliseconds patience);

    // ---- transport

    /**
     * Resumes a paused player; a playing one starts its red entry again. Otherwise starts the given selected row of its
     * list (-1: none), the red entry, what is prepared or the next title. A missing file is told by FileMissing.
     */
    void Play(int player, int selectedRow);
    void PlayRow(int player, int row);
    /**
     * Goes on with a title (its names, path and cue point) at this second, or stands paused there. List and marks stay
     * as they are. False, after a Message, when the file cannot be played.
     */
    bool ResumeTitle(int player, const DeckTitle& title, double second, bool paused);
    /** A file has been moved, or has other tags: who has it loaded goes on with its new path and texts. */
    void FollowMove(const QString& from, const QString& to);
    void FollowTexts(const QString& path, const QString& title, const QString& artist);
    void Pause(int player);
    void Stop(int player);
    /** Takes the next title of the player's list; a player whose list is at its end stays stopped. */
    void Next(int player);
    void ToggleMute(int player);
    void SetPitch(int player, int pitch);
    void SeekSeconds(int player, double seconds);
    /** Back to the title's start, or its cue point. */
    void ToStart(int player);
    /** Overall volume of the output, 0..100. */
    void SetMasterVolume(int volume);

    // ---- fader

    void SetFader(int position);
    /** While the user holds the fader a running fade waits. */
    void HoldFader(bool held) { faderHeld_ = held; }
    /** A fade by hand towards a player; a stopped one starts its title first. selectedRow as Play. */
    void FadeTo(int player, int selectedRow);

    // ---- live tools

    /** A scheduled file plays, both players are silent. Afterwards: at 100 until the fader moves or one starts. */
    void SetJingle(bool plays);
    /** Turns a player down to a volume, 0..100; player 0 takes it back. */
    void SetDip(int player, int volume);

    // ---- listening on the main output: pre-listening and play-through

    /** No hand-over and no safety net until one of the two ends; a running fade stops where it is. */
    void BeginListening();
    bool IsListening() const { return listening_; }
    /**
     * Plays a title from its start, without a list, as PlayState::Listened. status: shown while it plays.
     * False, after a Message, when the file cannot be played.
     */
    bool PlayListened(int player, const DeckTitle& title, const QString& status = QStringLiteral("play"));
    /** Whether such a title is on the player, its file perhaps not open yet. */
    bool IsListened(int player) const { return layer_.Record(player).state == PlayState::Listened; }
    /** No louder than this whatever the fader says, reached within the time; 100 lifts it. */
    void LimitVolume(int player, int volume, int milliseconds);
    /** The player stops, and the music that ran before goes on by AfterListening. */
    void EndListening(int player);
    /** Music has been started meanwhile: only the watch begins again. */
    void LeaveListening() { listening_ = false; }

    // ---- called by timers

    void CheckHandOver();
    void StepFade();
    void Dispatch();

    // ---- state

    MixState State() const { return StateNow(false); }
    int Fader() const { return fader_.Position(); }
    int OnAirPlayer() const { return OnAir(StateNow(false)); }
    bool IsMuted(int player) const { return Deck(player).muted; }
    /** Tenths of a percent. */
    int Pitch(int player) const { return layer_.Record(player).pitch; }
    const DeckTitle& Title(int player) const { return Deck(player).title; }
    /** "play", "pause", "stop" or "mute"; "lädt" while it waits for its file; a listened title's own text. */
    QString StatusText(int player) const;
    audio::Activity Activity(int player) const { return layer_.Activity(player); }
    /** Started, and its file is not open yet. */
    bool IsOpening(int player) const { return layer_.Record(player).opening; }
    double PositionSeconds(int player) const { return layer_.PositionSeconds(player); }
    AudioLayer& Layer() { return layer_; }

private:
    DeckData& Deck(int player) { return decks_.at(static_cast<std::size_t>(player - 1)); }
    const DeckData& Deck(int player) const { return decks_.at(static_cast<std::size_t>(player - 1)); }
    Playlist& List(int player) { return *Deck(player).list; }

    MixState StateNow(bool withNext) const;
    bool Start(const StartAction& action);
    bool StartNext(int player);
    bool EnsurePlaying(int player);
    bool StartRow(int player, int row, bool asked);
    void ReadyLoaded(int player);
    void StartLoaded(int player);
    void ReadLength(int player);
    void DropUnplayable(int player, const QString& why);
    void WatchOpening(int player);
    void GiveUpOpening(int player, const QString& why);
    void StartStream(int player);
    void StopPlayer(int player);
    void EndHandOver();
    int VolumeOf(const DeckData& deck) const;
    void ApplyVolumes();
    /** To where the running fade is going. */
    void SlideVolumes();
    bool IsAudible(int player) const;
    void TellEnd(int player);
    void MoveFader(int position);
    /** The player that a running fade moves to, 0 for none. */
    int FadeTarget() const { return fader_.Step() == 0 ? 0 : fader_.Step() < 0 ? 1 : 2; }
    void NoteStarted(int player);
    void PrepareNext(int player);
    void ShowPrepared(int player);
    void TitleEnded(int player);
    void LookAtOutput();
    bool HasFailed(int player) const;
    void PassOn(int player);
    bool IsDue(int player, const MixState& state) const;
    void WatchStandstill();
    void EndStandstill(int nth);
    bool PlayEmergency(int player);
    static void OnEnd(audio::Handle sync, audio::Handle channel, std::uint32_t data, void* user);
    static void OnDeviceLost(audio::Handle sync, audio::Handle channel, std::uint32_t data, void* user);

    AudioLayer& layer_;
    std::array<DeckData, 2> decks_;
    MixerOptions options_;
    CrossFader fader_;
    LiveVolumes live_;
    FileProbe files_;
    std::function<bool(const QString& path)> exists_ = [this](const QString& path) { return files_.Exists(path); };
    EmergencyTitle emergency_;
    StandstillWatch standstill_;
    std::function<double(const QString& path)> titleGain_ = [](const QString&) { return 0.0; };
    int patience_ = 40; ///< ms
    bool useCuePoints_ = true;
    bool faderHeld_ = false;
    bool handOverRunning_ = false;
    bool fadesOut_ = false; ///< the fade by hand goes to a player without sound, as long as nothing is started
    bool heldByUser_ = true;
    int lastOnAir_ = 0;
    bool listening_ = false;
    bool musicRan_ = false; ///< when the listening began
};

} // namespace kalvo
