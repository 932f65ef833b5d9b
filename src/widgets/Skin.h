#pragma once

#include <QColor>
#include <QString>
#include <QStringList>

namespace kalvo {

/** The colours of one skin. Everything painted takes its colour from here; Ink is the text on a fill. */
struct Skin {
    QString name;
    QColor window, panel, base, alt;
    QColor text, dim;
    QColor button, edge, line, grid;
    QColor highlight, highlightText, mark;
    QColor onAir, onAirInk;
    QColor cued, cuedInk;
    QColor warning, warningFill, warningFillInk;
    QColor p1, p1Ink, p2, p2Ink;
    QColor waveBack, wavePlayed;
    QColor meterLow, meterMid, meterHigh;

    /** player: 1 or 2. */
    const QColor& Player(int player) const { return player == 2 ? p2 : p1; }
    const QColor& PlayerInk(int player) const { return player == 2 ? p2Ink : p1Ink; }
};

class Skins {
public:
    /** "Dark Blue", "Light Blue", "Light Green", "Grey", "Light Grey". */
    static QStringList Names();
    /** An unknown name gives "Light Green". */
    static Skin Named(const QString& name);
};

/** `share` (0..1) of `over` laid upon `under`. */
QColor Mixed(const QColor& under, const QColor& over, double share);

} // namespace kalvo
