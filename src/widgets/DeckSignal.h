#pragma once

namespace kalvo {

/** What a deck's head tells, loudest first. At most one deck is OnAir or Muted. */
enum class DeckSignal {
    OnAir,   /**< "ON AIR", red head and frame */
    Muted,   /**< "STUMM": on air but muted */
    Running, /**< "LÄUFT": plays without leading */
    Paused,  /**< "PAUSE" */
    Ready,   /**< "BEREIT": loaded and silent */
    None     /**< nothing loaded */
};

} // namespace kalvo
