#include "playback/ui/frmEqualizer.h"

#include "playback/EqualiserPresets.h"
#include "support/PartOf.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QSlider>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

using test::Part;

struct frmEqualizerTest : ::testing::Test {
    frmEqualizerTest() {
        QObject::connect(&dialog, &frmEqualizer::Changed, [this] { ++changes; });
    }

    frmEqualizer dialog;
    int changes = 0;
    QComboBox& presets = *Part<QComboBox>(dialog, "cboVorlage");
};

TEST_F(frmEqualizerTest, EveryControlMovesItsValueAndIsToldOnce) {
    dialog.Show({});
    EqualiserSettings expected;
    for (std::size_t band = 0; band < kBandFrequencies.size(); ++band) {
        const int step = static_cast<int>(band) - 6;
        Part<QSlider>(dialog, qPrintable(u"Band%1"_s.arg(kBandFrequencies.at(band))))->setValue(step);
        expected.bands.at(band) = 10 + step;
        EXPECT_EQ(dialog.Shown(), expected);
    }
    Part<QSlider>(dialog, "Hall")->setValue(5);
    Part<QCheckBox>(dialog, "EQStatus")->click();
    expected.reverb = 15;
    expected.on = true;
    EXPECT_EQ(dialog.Shown(), expected);
    EXPECT_EQ(changes, 11) << "the band that was moved to where it stood is no change";
    EXPECT_EQ(Part<QCheckBox>(dialog, "EQStatus")->text(), u"Equalizer an"_s);
    EXPECT_EQ(presets.currentText(), u"Eigene"_s);
}

TEST_F(frmEqualizerTest, PresetsSetTheBandsAloneAndTheResetTheReverbToo) {
    EqualiserSettings settings{true};
    settings.reverb = 4;
    dialog.Show(settings);
    presets.setCurrentText(u"Rock"_s);
    Q_EMIT presets.activated(presets.currentIndex());
    settings.bands = EqualiserPresets::All()[static_cast<std::size_t>(presets.currentIndex())].bands;
    EXPECT_EQ(dialog.Shown(), settings);
    presets.setCurrentText(u"Eigene"_s);
    Q_EMIT presets.activated(presets.currentIndex());
    EXPECT_EQ(presets.currentText(), u"Rock"_s) << "own ones are made, not chosen";
    Part<QPushButton>(dialog, "cmdNeutral")->click();
    EXPECT_EQ(dialog.Shown(), EqualiserSettings{true});
    EXPECT_EQ(presets.currentText(), u"Neutral"_s);
}

} // namespace
} // namespace kalvo
