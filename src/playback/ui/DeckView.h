#pragma once

#include "widgets/DeckSignal.h"

#include <QPixmap>
#include <QString>

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
    /** Null: the deck shows no cover. */
    QPixmap cover;
};

} // namespace kalvo
