#pragma once

#include "playback/ui/DeckView.h"
#include "widgets/HandOverLine.h"

namespace kalvo {

class Mixer;

/** What a deck shows, by the state of its player. levels: peaks 0..1. */
DeckView PresentDeck(const Mixer& mixer, int player, float levelLeft, float levelRight);

/** What the hand-over line tells: announced from 15 seconds before it. */
HandOverView PresentHandOver(const Mixer& mixer);

/** "03:07/04:55", whole seconds rounded to the nearest. */
QString TimeText(double position, double length);

/** Peak 0..1 to the lit share of a level bar: 48 dB range, even in decibels. */
float LevelShare(float peak);

} // namespace kalvo
