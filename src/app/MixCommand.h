#pragma once

#include <QString>
#include <QStringList>
#include <QTextStream>

#include <memory>

namespace kalvo {

namespace audio {
class AudioLibrary;
}
struct MixerOptions;

/**
 * Mixes titles into a WAV file, faster than they would play, through the same players, fader and mixer as the desk:
 * titles go alternately into both lists, Player 1 begins. Prints each start and hand-over with its time.
 * Returns the exit code: 0 when every title was mixed, 1 when some had to be left out, 2 when there is no mix.
 */
int RunMixCommand(std::unique_ptr<audio::AudioLibrary> library, const MixerOptions& options, const QString& output,
                  const QStringList& titles, QTextStream& report);

} // namespace kalvo
