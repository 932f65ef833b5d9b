#pragma once

#include "audio/AudioLibrary.h"

#include <QString>

#include <optional>

namespace kalvo {

/** What is to be said about the output device. */
struct OutputNews {
    enum class Kind : unsigned char { Lost, Replaced, Back };

    Kind kind;
    QString text; ///< German, one line

    /** Whether the sound does not come from where it should. */
    bool IsTrouble() const { return kind != Kind::Back; }
};

/**
 * Finds out what has become of the output device and says it once: gone and silent, gone and replaced by another, back
 * again. A replacement comes within some tenths of a second; the loss alone is only said when there is none. UI thread.
 */
class OutputWatch {
public:
    /** The device that was chosen. */
    void Begin(const audio::OutputInfo& chosen);
    /** Called every 50 ms. */
    std::optional<OutputNews> Look(const audio::OutputInfo& now);

private:
    enum class State : unsigned char { Chosen, Lost, Replaced };

    std::optional<OutputNews> Returned();
    std::optional<OutputNews> Silent();
    std::optional<OutputNews> PlaysOn(const QString& name);

    QString chosen_;
    QString playing_; ///< the device that has been spoken of last
    State state_ = State::Chosen;
    int missing_ = 0; ///< looks without a device
};

} // namespace kalvo
