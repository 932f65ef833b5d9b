#pragma once

#include <QProgressDialog>
#include <QString>

#include <optional>

namespace kalvo {

namespace audio {
class AudioLibrary;
}

/** Exact lengths of many titles, by the audio library; shows how far it is and can be cancelled. UI thread. */
class TitleLengths {
public:
    /** count: how many will be asked for. The library outlives this. */
    TitleLengths(audio::AudioLibrary& library, int count, QWidget& window);

    /** Seconds; 0 when the file cannot be played, no value once the user has cancelled. */
    std::optional<double> Of(const QString& path);

private:
    audio::AudioLibrary& library_;
    QProgressDialog progress_;
    int done_ = 0;
};

} // namespace kalvo
