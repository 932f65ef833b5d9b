#pragma once

#include "audio/Encoder.h"
#include "audio/EncoderLibrary.h"

#include <map>
#include <memory>

namespace kalvo::audio {

/** Keeps the table of recordings and joins them to the audio library; the work is done by Encoder. */
class EncoderLibraryImpl final : public EncoderLibrary {
public:
    explicit EncoderLibraryImpl(SinkOpener opener = CreateFileSink);
    ~EncoderLibraryImpl() override;

    std::uint32_t GetVersion() const override { return 0x00000002; }
    EncodeError ErrorGetCode() const override { return error_; }

    Handle Encode_Start(AudioLibrary& audio, Output output, const std::string& path,
                        const EncodeSettings& settings) override;
    Handle Encode_Start(AudioLibrary& audio, Handle stream, const std::string& path,
                        const EncodeSettings& settings) override;
    bool Encode_Stop(Handle recording) override;
    bool Encode_GetState(Handle recording, EncodeState& state) override;

private:
    struct Recording {
        AudioLibrary* audio; ///< null once it has let go of the encoder
        std::unique_ptr<Encoder> encoder;
    };

    template<class Source>
    Handle Start(AudioLibrary& audio, Source source, int rate, const std::string& path, const EncodeSettings& settings);
    void Detach(Recording& recording);
    bool Report(EncodeError error);

    SinkOpener opener_;
    EncodeError error_ = EncodeError::None;
    Handle lastHandle_ = 0;
    std::map<Handle, Recording> recordings_;
};

} // namespace kalvo::audio
