#pragma once

#include "audio/AudioTypes.h"
#include "live/InspectedTitle.h"
#include "live/PreshowFinding.h"
#include "playback/MixerOptions.h"
#include "playback/OutputChoice.h"
#include "playlists/PlaylistEntry.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QStringList>

#include <array>
#include <optional>

namespace kalvo {

/** An entry with its row, from 0. */
struct PreshowEntry {
    int row = 0;
    PlaylistEntry entry;
};

/** A file that a live tool plays. */
struct PreshowFile {
    QString where; ///< "Termin-Play, täglich 08:00" or "Sampler, Taste 4"
    QString path;
    PreshowTarget target;
};

/** Everything the pre-show check judges that the desk knows without asking a disk. */
struct PreshowFacts {
    std::array<QList<PreshowEntry>, 2> lists; ///< what will still be played; index = list - 1
    MixerOptions mixing;
    bool levelling = false; ///< titles start equally loud
    QStringList devices;    ///< names from number 0 on
    OutputChoice main;
    OutputChoice headphones;
    bool outputOpen = false;
    audio::OutputInfo output;
    QString emergencyTitle; ///< path, empty for none
    QList<PreshowFile> files;
    QString recordingFolder;
    int recordingRate = 0; ///< bytes a second
    QString dataFolder;
    std::optional<qsizetype> refillTitles; ///< that the automatic DJ can fill up with; none: it does not
};

/** What the disks have answered so far. */
struct PreshowAnswers {
    QHash<QString, InspectedTitle> titles;
    bool disksAsked = false;    ///< what follows holds
    QSet<QString> missingFiles; ///< of PreshowFacts::files, and the emergency title
    qint64 recordingFree = -1;  ///< bytes; -1: unknown
    qint64 dataFree = -1;
};

namespace Preshow {

/** With fewer titles to choose from, the automatic DJ soon repeats itself. */
constexpr qsizetype kEnoughToRefill = 20;

/** The findings in the order in which they are shown; what has not been answered yet is not judged. */
QList<PreshowFinding> Judge(const PreshowFacts& facts, const PreshowAnswers& answers);

/** Those about the titles alone: each by itself, then against the others. */
QList<PreshowFinding> JudgeTitles(const PreshowFacts& facts, const PreshowAnswers& answers);
/** Those about devices, disks and tools. */
QList<PreshowFinding> JudgeDesk(const PreshowFacts& facts, const PreshowAnswers& answers);

} // namespace Preshow

} // namespace kalvo
