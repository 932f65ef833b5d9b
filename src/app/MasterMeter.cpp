#include "app/MasterMeter.h"

#include "app/DeckPresenter.h"
#include "audio/Limiter.h"
#include "playback/AudioLayer.h"
#include "playback/SpectrumBands.h"
#include "widgets/MeterDisplay.h"

namespace kalvo {

namespace {

/** From here on the limiter is at work: without it the device would clip. */
constexpr float kLimited = audio::Limiter::kCeiling * 0.9995F;

} // namespace

void MasterMeter::Refresh() {
    if (!display_.isVisible())
        return;
    audio::AudioLibrary& library = layer_.Audio();
    const audio::Levels levels = library.GetOutputLevels(audio::Output::Main);
    MeterReading reading;
    reading.levels = {LevelShare(levels.left), LevelShare(levels.right)};
    reading.clipped = {levels.left >= kLimited, levels.right >= kLimited};
    if (display_.Style() == MeterStyle::Analyzer) {
        std::array<float, 1024> lines{};
        const std::size_t count =
            library.GetOutputData(audio::Output::Main, audio::DataKind::Fft2048, lines.data(), lines.size());
        audio::OutputInfo info;
        library.GetInfo(audio::Output::Main, info);
        FillSpectrumBands({lines.data(), count}, info.sampleRate, reading.bands);
    }
    display_.Show(reading);
}

} // namespace kalvo
