#pragma once

#include <array>

namespace kalvo {

/** Position of the cross-fader and the fade that moves it. Plain values, no timer of its own. */
class CrossFader {
public:
    /** -100 (Player 1) .. 100 (Player 2). */
    int Position() const { return position_; }
    /** Cuts to the range; a running fade goes on from here. */
    void SetPosition(int position);

    /** -1 towards Player 1, 1 towards Player 2, 0 no fade. */
    int Step() const { return step_; }
    void FadeTowards(int player) { step_ = player == 1 ? -1 : 1; }
    void EndFade() { step_ = 0; }

    /** Steps of the running fade to the next bend of the volume law, the centre or an end; 0 without a fade. */
    int StepsToBend() const;

    /** One step of the running fade. True when the fade has arrived at an end with it. */
    bool Tick();

private:
    int position_ = 0;
    int step_ = 0;
};

/** A fade speed: the interval in ms of one fader step, the name of its menu item and its text. */
struct FadeSpeed {
    int interval;
    const char* action;
    const char16_t* text;
};

constexpr std::array<FadeSpeed, 5> kFadeSpeeds{{{60, "UGSehrlangsam", u"sehr langsam"},
                                                {45, "UGLangsam", u"langsam"},
                                                {30, "UGMittel", u"mittel"},
                                                {15, "UGSchnell", u"schnell"},
                                                {5, "UGSehrschnell", u"sehr schnell"}}};
constexpr int kDefaultFadeInterval = 30;

/** Index in kFadeSpeeds; a stored interval that is none of the five counts as the default. */
int FadeSpeedIndex(int interval);

} // namespace kalvo
