#pragma once

#include "audio/AudioLibrary.h"

#include <QString>
#include <QStringList>

namespace kalvo {

class Settings;

/** An output device as it is kept: its number, and its name, which wins where both exist. */
struct OutputChoice {
    int device = 1;
    QString name;

    bool operator==(const OutputChoice&) const = default;

    /** Main: the players' device, number 1 by default; Headphones: 0 by default, which is none. */
    static OutputChoice Read(const Settings& settings, audio::Output output = audio::Output::Main);
    void Write(Settings& settings, audio::Output output = audio::Output::Main) const;

    /** The number to open; names: of all devices, from number 0 on. A name that is gone leaves the number. */
    int Resolve(const QStringList& names) const;
};

/** How much sound the output holds ready, as "Soundkarte"/`Puffer` keeps it: more is safer, less is quicker. */
namespace OutputBuffer {

/** "schnell", "normal", "sicher". */
QStringList Names();
/** Frames of a name, as AudioLibrary::Init takes them; an unknown one counts as "normal". */
int Frames(const QString& name);
/** The name that is kept; "normal" by default. */
QString Read(const Settings& settings);
void Write(Settings& settings, const QString& name);

} // namespace OutputBuffer

} // namespace kalvo
