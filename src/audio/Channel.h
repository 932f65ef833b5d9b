#pragma once

#include "audio/AudioLibrary.h"
#include "audio/OutputPort.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace kalvo::audio {

/** A sync procedure that is due. */
struct DueSync {
    Handle sync = 0;
    SyncProcedure procedure = nullptr;
    void* user = nullptr;
};

/**
 * The control thread's side of one stream: what has been asked of it, its syncs and effects. Operations answer with
 * ErrorCode::None or the reason of the refusal, in which case nothing has changed.
 */
class Channel {
public:
    Channel(Output output, OutputPort& port, std::unique_ptr<FrameSource> source);
    /** Ends its sinks and gives the voice to the port, which fades it out. */
    ~Channel();
    Channel(const Channel&) = delete;
    Channel& operator=(const Channel&) = delete;

    Output TheOutput() const { return output_; }
    const SourceFormat& Format() const { return format_; }
    /** Length and rate as known by now. */
    std::int64_t Frames() const { return voice_->Reader().Source().Frames(); }
    int Bitrate() const { return voice_->Reader().Source().Bitrate(); }
    Voice& TheVoice() { return *voice_; }

    ErrorCode Join();
    ErrorCode Play(bool fromStart);
    ErrorCode Pause();
    ErrorCode Resume();
    ErrorCode Stop();
    Activity Active() const;
    /** In frames. */
    std::int64_t Position() const { return voice_->Reader().Position(); }
    ErrorCode Seek(std::uint64_t frame);

    ErrorCode SetAttributes(int frequency, int volume, int pan);
    ErrorCode SlideAttributes(int frequency, int volume, int pan, int milliseconds);
    /** In dB. */
    ErrorCode SetGain(float decibel);
    /** As set; during a slide the values of the moment. */
    Attributes GetAttributes() const;

    ErrorCode AddSync(Handle handle, std::uint32_t type, SyncProcedure procedure, void* user);
    bool RemoveSync(Handle handle);
    /** The procedures of all events since the last call, ends first; `deviceLost` adds those. */
    std::vector<DueSync> TakeDueSyncs(bool deviceLost);

    ErrorCode AddEffect(Handle handle, EffectType type);
    ErrorCode RemoveEffect(Handle handle);
    /** Handle error when the effect is another stream's. */
    ErrorCode SetParameters(Handle handle, const EffectParameters& parameters);
    bool GetParameters(Handle handle, EffectParameters& parameters) const;

private:
    struct Sync {
        Handle handle;
        SyncType type;
        bool oneTime;
        SyncProcedure procedure;
        void* user;
    };
    struct Effect {
        Handle handle;
        EffectType type;
        std::size_t band;
        EffectParameters parameters;
    };

    Command MakeCommand(Command::Kind kind) const;
    ErrorCode Send(const Command& command) { return port_.Send(command) ? ErrorCode::None : ErrorCode::Device; }
    ErrorCode Start();
    bool Attributable(int frequency, int volume, int pan) const;
    void Note(int frequency, int volume, int pan);
    ErrorCode SendParameters(const Effect& effect, const EffectParameters& parameters);
    bool FreeBand(std::size_t& band) const;
    std::vector<Effect>::iterator Find(Handle effect);
    void TakeDue(SyncType type, std::vector<DueSync>& due);

    Output output_;
    SourceFormat format_;
    OutputPort& port_;
    std::unique_ptr<Voice> voice_;
    Activity wanted_ = Activity::Stopped;
    std::uint64_t start_ = 0; // counts Play(); the voice reports the number that has ended
    Attributes attributes_;   // as last set; a slide's target
    std::uint32_t slide_ = 0; // number of the last slide sent
    std::uint32_t endsSeen_ = 0;
    std::uint32_t slideEndsSeen_ = 0;
    std::vector<Sync> syncs_;
    std::vector<Effect> effects_;
};

} // namespace kalvo::audio
