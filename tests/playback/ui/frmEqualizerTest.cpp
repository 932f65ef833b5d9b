#include "playback/ui/frmEqualizer.h"

#include "playback/EqualiserPresets.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <gtest/gtest.h>

#include <stdexcept>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

struct frmEqualizerTest : ::testing::Test {
    template<typename Widget>
    Widget& Find(const QString& name) {
        auto* found = dialog.findChild<Widget*>(name);
        if (found == nullptr)
            throw std::runtime_error(name.toStdString());
        return *found;
    }
    void SetUp() override {
        QObject::connect(&dialog, &frmEqualizer::Changed, [this] { ++changes; });
    }

    frmEqualizer dialog;
    int changes = 0;
};

TEST_F(frmEqualizerTest, EveryControlMovesItsValueAndIsToldOnce) {
    dialog.Show({});
    EqualiserSettings expected;
    for (std::size_t band = 0; band < kBandFrequencies.size(); ++band) {
        const int step = static_cast<int>(band) - 6;
        Find<QSlider>(u"Band%1"_s.arg(kBandFrequencies.at(band))).setValue(step);
        expected.bands.at(band) = 10 + step;
        EXPECT_EQ(dialog.Shown(), expected);
    }
    Find<QSlider>(u"Hall"_s).setValue(5);
    Find<QCheckBox>(u"EQStatus"_s).click();
    expected.reverb = 15;
    expected.on = true;
    EXPECT_EQ(dialog.Shown(), expected);
    EXPECT_EQ(changes, 11) << "the band that was moved to where it stood is no change";
    EXPECT_EQ(Find<QCheckBox>(u"EQStatus"_s).text(), u"Equalizer an"_s);
    EXPECT_EQ(Find<QComboBox>(u"cboVorlage"_s).currentText(), u"Eigene"_s);
}

TEST_F(frmEqualizerTest, ShowingTellsNothing) {
    EqualiserSettings settings;
    settings.bands = {0, 20, 7, 13, 11, 10, 10, 10, 10, 10};
    dialog.Show(settings);
    QStringList values;
    const QList<QLabel*> labels = dialog.findChildren<QLabel*>();
    for (const QLabel* label : labels)
        values += label->text();
    for (const QString& text : {u"\u221215"_s, u"+15"_s, u"\u22124,5"_s, u"+4,5"_s, u"+1,5"_s})
        EXPECT_TRUE(values.contains(text)) << text.toStdString();
    EXPECT_EQ(changes, 0);
}

TEST_F(frmEqualizerTest, PresetsSetTheBandsAloneAndTheResetTheReverbToo) {
    EqualiserSettings settings;
    settings.on = true;
    settings.reverb = 4;
    dialog.Show(settings);
    auto& presets = Find<QComboBox>(u"cboVorlage"_s);
    presets.setCurrentText(u"Rock"_s);
    Q_EMIT presets.activated(presets.currentIndex());
    settings.bands = EqualiserPresets::All()[static_cast<std::size_t>(presets.currentIndex())].bands;
    EXPECT_EQ(dialog.Shown(), settings);
    presets.setCurrentText(u"Eigene"_s);
    Q_EMIT presets.activated(presets.currentIndex());
    EXPECT_EQ(presets.currentText(), u"Rock"_s) << "own ones are made, not chosen";
    Find<QPushButton>(u"cmdNeutral"_s).click();
    EXPECT_EQ(dialog.Shown(), EqualiserSettings{true});
    EXPECT_EQ(presets.currentText(), u"Neutral"_s);
}

} // namespace
} // namespace kalvo
