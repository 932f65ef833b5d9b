#pragma once

#include "playback/RehearsalDesk.h"

#include <QList>

#include <atomic>
#include <functional>
#include <string>

namespace kalvo {

/** Where one title gives way to the next. */
struct Joint {
    enum class Kind : unsigned char {
        Fade,    ///< the fader moves over while both play
        Jump,    ///< the other player begins when the title has ended
        Continue ///< the same player goes on with its own list
    };

    Kind kind = Kind::Fade;
    /** The one that ends, the one that begins; further ones that begin before the fade has ended. */
    QList<DeckTitle> titles;
    double at = 0;     ///< seconds from now until it begins
    double fade = 0;   ///< seconds that the fader moves; 0: none
    DeskMoment before; ///< a moment before it

    /** "Anna Bergström - Wach", of the nth title. */
    QString NameOf(qsizetype index) const;
    /** "Anna Bergström - Wach → The Harbour Lights - Paper Boats". */
    QString Text() const;
    /** Alike for joints that sound alike under the same settings. */
    QString Key() const;
};

/**
 * All hand-overs to come, by letting the desk's own mixer play the lists to their end without sound. length: as
 * TimelineAudio, called for each title once it comes up; told: after each joint. Ends early, with what it has, when
 * `cancelled` becomes true. Any thread.
 */
QList<Joint> PlanJoints(const DeskMoment& now, const RehearsalSettings& settings,
                        const std::function<double(const std::string& path)>& length,
                        const std::atomic<bool>& cancelled, const std::function<void(int joints)>& told = {});

} // namespace kalvo
