#pragma once

#include "audio/AudioLibrary.h"
#include "playback/EqualiserSettings.h"
#include "playback/OutputWatch.h"
#include "playback/PlayerRecord.h"

#include <QString>
#include <QStringList>

#include <array>
#include <memory>
#include <optional>

namespace kalvo {

/**
 * The thin layer between the players and the audio library: initialises the output, owns the streams of both players.
 * UI thread. A player number other than 1 or 2 is a bounds error (std::out_of_range).
 */
class AudioLayer {
public:
    explicit AudioLayer(std::unique_ptr<audio::AudioLibrary> library);
    ~AudioLayer();
    AudioLayer(const AudioLayer&) = delete;
    AudioLayer& operator=(const AudioLayer&) = delete;

    audio::AudioLibrary& Audio() { return *library_; }
    QString AudioVersion() const;

    /**
     * Opens the main output: the device wanted, else device 1. bufferFrames as AudioLibrary::Init.
     * False when neither can be opened. OutputDevice() tells the number afterwards.
     */
    bool InitAudio(int outputDevice, int bufferFrames);
    int OutputDevice() const { return outputDevice_; }
    /** 1 when the output offers effects, else 0. */
    int DirectSound8() const { return directSound8_; }
    /** Called every 50 ms: what has become of the main output's device since. */
    std::optional<OutputNews> LookAtOutput();
    /** Stops and frees every stream, then the outputs. */
    void StopAudio();

    /** Names of the devices from number 0 on. */
    QStringList DeviceNames();

    PlayerRecord& Record(int player) { return records_.at(static_cast<std::size_t>(player - 1)); }
    const PlayerRecord& Record(int player) const { return records_.at(static_cast<std::size_t>(player - 1)); }

    /**
     * Replaces the player's stream by a stopped new one for the file, with pitch, centred pan and effects; the old one
     * is gone in any case. Returns the new handle, 0 when the file cannot be played.
     */
    audio::Handle LoadStream(int player, const QString& path);
    /** The same for a file in memory. */
    audio::Handle LoadHeld(int player, const audio::HeldFile& file);
    /** LoadStream without waiting for the file: AwaitLoading tells when the stream can be used. */
    audio::Handle BeginLoading(int player, const QString& path);
    /** Waits for the player's file, 0 just looks. After Failed the player is empty. */
    audio::OpenState AwaitLoading(int player, int milliseconds);
    /** Stops and frees the player's stream. */
    void FreeStream(int player);
    /**
     * Opens a file ahead, so that loading it is immediate; returns at once. An empty path drops what was opened.
     * Prepared() tells how far it is.
     */
    void Prepare(int player, const QString& path);
    audio::OpenState Prepared(int player);

    /** volume 0..100. */
    void SetPlayerVolume(int player, int volume);
    /** The same, reached evenly within the time: steps of a fade join to one line. */
    void SlidePlayerVolume(int player, int volume, int milliseconds);
    /** dB, -24..24, of the title that is loaded; the next one starts with 0 again. */
    void SetGain(int player, double decibel);
    /** Tenths of a percent, -120..120; heard at once, kept for the next titles. */
    void SetPitch(int player, int pitch);
    /** Heard at once on both players, kept for the next titles. */
    void SetEqualiser(const EqualiserSettings& settings);
    const EqualiserSettings& Equaliser() const { return equaliser_; }

    audio::Activity Activity(int player);
    double PositionSeconds(int player);
    double LengthSeconds(int player);
    /** Seconds from the title's start, cut to its length. */
    void SetPositionSeconds(int player, double seconds);

private:
    audio::Handle AwaitLoaded(int player);
    void ApplyPitch(int player);
    void AddEffects(PlayerRecord& record);
    void SetEffects(const PlayerRecord& record);
    void RemoveEffects(PlayerRecord& record);

    std::unique_ptr<audio::AudioLibrary> library_;
    std::array<PlayerRecord, 2> records_;
    EqualiserSettings equaliser_;
    OutputWatch watch_;
    int outputDevice_ = audio::kDefaultDevice;
    int directSound8_ = 0;
};

} // namespace kalvo
