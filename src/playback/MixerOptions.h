#pragma once

#include "playback/CrossFader.h"
#include "playback/HandOver.h"

#include <QString>

namespace kalvo {

class Settings;

/** How the desk mixes. Texts and defaults are those of the settings file. */
struct MixerOptions {
    FadeMode mode = FadeMode::FadeCrossOver;
    int fadeInterval = kDefaultFadeInterval; ///< ms a fader step
    int switchOver = 9;                      ///< seconds before a title's end
    bool removePlayed = false;
    bool preload = true;
    bool continuous = true;
    bool automatic = true;

    /** Section "Mixer"; continuous and automatic are kept elsewhere. */
    static MixerOptions Read(const Settings& settings);
};

/** "No Fading" or "Fade-CrossOver". */
QString FadeModeText(FadeMode mode);
/** Anything but "No Fading" is "Fade-CrossOver". */
FadeMode FadeModeFromText(const QString& text);

QString FadeModeCaption(FadeMode mode);
QString ContinuousCaption(bool on);
QString AutomaticCaption(bool on);

} // namespace kalvo
