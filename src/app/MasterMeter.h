#pragma once

namespace kalvo {

class AudioLayer;
class MeterDisplay;

/** Feeds the mixer's meter with what the main output sends to its device. */
class MasterMeter {
public:
    /** Both outlive this. */
    MasterMeter(AudioLayer& layer, MeterDisplay& display) : layer_(layer), display_(display) {}

    /** Every 50 ms. */
    void Refresh();

private:
    AudioLayer& layer_;
    MeterDisplay& display_;
};

} // namespace kalvo
