#pragma once

#include <QString>
#include <QStringList>

namespace kalvo {

class Settings;

/** The output device of the players as it is kept: its number, and its name, which wins where both exist. */
struct OutputChoice {
    int device = 1;
    QString name;

    static OutputChoice Read(const Settings& settings);
    void Write(Settings& settings) const;

    /** The number to open; names: of all devices, from number 0 on. A name that is gone leaves the number. */
    int Resolve(const QStringList& names) const;
};

} // namespace kalvo
