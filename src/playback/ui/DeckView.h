#pragma once

#include "base/Waveform.h"
#include "widgets/DeckSignal.h"

#include <QPixmap>
#include <QString>

#include <memory>

namespace kalvo {

/** All that a deck shows at one moment; the panel repaints only what differs from the moment before. */
struct DeckView {
    DeckSignal signal = DeckSignal::None;
    /** "Player 1       3. von 17 in Party": tooltip of the head. */
    QString caption;
    /** "play", "stop", "pause", "mute". */
    QString status;
    QString artist;
    QString title;
    /** "MP3 320 kbit/s" */
    QString bitrate;
    /** "04:44/04:55" */
    QString time = QStringLiteral("00:00/00:00");
    /** "−00:11" with the true minus; of a stopped deck the title's length, shown dim. */
    QString remaining;
    /** Time is running out: the remaining time turns to the warning colour. */
    bool warning = false;
    /** 0 to 1 of the title; below 0: no position line. */
    double position = -1;
    double lengthSeconds = 0;
    /** Before the end; 0: no switch-over point. */
    double switchOverSeconds = 0;
    /** From the start; below 0: none. */
    double cueSeconds = -1;
    /** 0 to 1, the lit share of the bar. */
    float levelLeft = 0;
    float levelRight = 0;
    bool muted = false;
    bool playing = false;
    /** Of the title's own rate, -120 to 120. */
    int pitchPermille = 0;
    /** Whether the deck keeps a place for the cover. */
    bool showsCover = false;
    /** Null: the place stays empty but for a sign. */
    QPixmap cover;
    /** Null: nothing is known of the title's sound. */
    std::shared_ptr<const Waveform> wave;
};

} // namespace kalvo
