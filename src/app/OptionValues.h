#pragma once

#include "app/DesktopOptions.h"
#include "archive/GridColumns.h"
#include "playback/MixerOptions.h"
#include "playback/OutputChoice.h"
#include "widgets/MeterStyle.h"

#include <QColor>
#include <QList>
#include <QString>

namespace kalvo {

class Settings;

/** Everything that the options dialog edits, with the defaults of "\kalvo.ini" and "\optionen.dll". */
struct OptionValues {
    static constexpr int kNoColour = -1;

    // "Metadata": the line for streaming encoders
    QString metaStatus = QStringLiteral("2144");
    QString metaAlternative; ///< for a title without artist and title
    QString metaStop;        ///< while nothing plays

    QList<GridColumn> columns;                       ///< of the archive, left to right
    QString chartsLimit = QStringLiteral("200");     ///< titles; the only value of "\optionen.dll"
    bool preload = true;                             ///< `Nachladen`
    bool tagsIntoLists = false;                      ///< `ID3WL`
    QString fontSize = QStringLiteral("klein");      ///< `Schriftgrad`: "klein", "mittel", "groß"
    QString buttonSize = QStringLiteral("klein");    ///< `Buttongroesse`: "klein", "gross"
    int wheelRows = 3;                               ///< archive rows per wheel notch, 1..20
    int volume = 35;                                 ///< `Lautstärke` of the output, 0..100
    int levelReduction = 50;                         ///< `Pegelabsenkung`, 0..100
    int microphoneLevel = 80;                        ///< `Mikrofonpegel`, 0..100
    QString meterStyle = QStringLiteral("Analyzer"); ///< one of MeterStyles()
    int meterColour = kNoColour;                     ///< red + 256 green + 65536 blue; kNoColour: the skin's
    QString password;                                ///< of the screen saver; empty = none, stored as "0"
    bool screenSaverKeys = false;                    ///< `Tastaturfunktion`
    bool removePlayed = false;                       ///< `WlLoeschen`
    int fadeInterval = kDefaultFadeInterval;         ///< ms a fader step, one of kFadeSpeeds
    int switchOver = 9;                              ///< seconds before a title's end, 0..99
    int scanInterval = 7;                            ///< seconds of each title in the play-through, 1..99
    FadeMode fadeMode = FadeMode::FadeCrossOver;
    QString skin = QStringLiteral("Light Green");
    OutputChoice headphones{0, {}};
    OutputChoice output;
    QString buffer;              ///< one of OutputBuffer::Names()
    bool useCuePoints = true;    ///< players start at an entry's cue point
    bool evenLoudness = false;   ///< titles start equally loud, as far as they are measured
    QString emergencyTitle;      ///< `Notfalltitel`: path of the title that plays when nothing else can; empty = none
    bool emergencyAtEnd = false; ///< `NotfalltitelAmEnde`: it plays when both lists are at their end, too
    DesktopOptions desktop;

    /** The nine styles of the level meter in the order of the choice. */
    static QStringList MeterStyles();
    /** Of one of their names; another text is the default. */
    static MeterStyle MeterStyleOf(const QString& name);
    /** Of a number as `Farbe` keeps it; invalid for kNoColour. */
    static QColor ColourOf(int number);

    /** chartsPath: of "\optionen.dll"; fontHeight: see GridColumns. What is absent or out of range has its default. */
    static OptionValues Read(const Settings& settings, const QString& chartsPath, int fontHeight);
    /** Every key in its given order, in one pass. What cannot be written is not reported. */
    void Write(Settings& settings, const QString& chartsPath) const;
    /** What differs from `before` stays, everything else is taken from `now`. */
    void KeepChangesOnly(const OptionValues& before, const OptionValues& now);
};

} // namespace kalvo
