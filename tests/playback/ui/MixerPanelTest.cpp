#include "playback/ui/MixerPanel.h"
#include "support/PartOf.h"
#include "widgets/IconButton.h"

#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QSlider>
#include <gmock/gmock.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;
using test::Part;

TEST(MixerPanelTest, SettersAreSilentExceptTheFader) {
    MixerPanel mixer;
    int told = 0;
    std::vector<int> fader;
    const auto count = [&told] { ++told; };
    QObject::connect(&mixer, &MixerPanel::VolumeChanged, &mixer, count);
    QObject::connect(&mixer, &MixerPanel::ModeChosen, &mixer, count);
    QObject::connect(&mixer, &MixerPanel::SpeedChosen, &mixer, count);
    QObject::connect(&mixer, &MixerPanel::ContinuousToggled, &mixer, count);
    QObject::connect(&mixer, &MixerPanel::AutomaticToggled, &mixer, count);
    QObject::connect(&mixer, &MixerPanel::FaderChanged, &mixer, [&](int position) { fader.push_back(position); });
    mixer.SetVolume(80);
    mixer.SetMode(u"Fade-CrossOver"_s);
    mixer.SetMode(u"Unknown"_s);
    mixer.SetSpeed(5);
    mixer.SetSpeed(7);
    mixer.SetContinuous(true);
    mixer.SetAutomatic(true);
    mixer.SetFader(-101);
    mixer.SetFader(-100);
    EXPECT_EQ(told, 0);
    EXPECT_THAT(fader, testing::ElementsAre(-100));
    EXPECT_EQ(Part<QLabel>(mixer, "lblGesamtlautstaerke")->text(), u"80"_s);
    EXPECT_EQ(Part<QComboBox>(mixer, "cboModus")->currentText(), u"Fade-CrossOver"_s);
    EXPECT_EQ(Part<QComboBox>(mixer, "cboTempo")->currentText(), u"Tempo: sehr schnell"_s);
}

TEST(MixerPanelTest, ChoicesOfTheUserAreTold) {
    MixerPanel mixer;
    QStringList told;
    const auto tell = [&](auto signal, const char* what) {
        QObject::connect(&mixer, signal, &mixer, [&told, what] { told += QLatin1String(what); });
    };
    QObject::connect(&mixer, &MixerPanel::SpeedChosen, &mixer, [&](int value) { told += QString::number(value); });
    QObject::connect(&mixer, &MixerPanel::ModeChosen, &mixer, [&](const QString& mode) { told += mode; });
    tell(&MixerPanel::FadeToPlayer1Clicked, "to 1");
    tell(&MixerPanel::FadeToPlayer2Clicked, "to 2");
    tell(&MixerPanel::FadeMenuRequested, "menu");
    for (int i : {4, 3, 2, 1, 0})
        Part<QComboBox>(mixer, "cboTempo")->setCurrentIndex(i);
    Part<QComboBox>(mixer, "cboModus")->setCurrentIndex(1);
    Part<QPushButton>(mixer, "Command5")->click();
    Part<QPushButton>(mixer, "Command6")->click();
    QContextMenuEvent right(QContextMenuEvent::Mouse, QPoint(5, 5), QPoint(5, 5));
    QApplication::sendEvent(Part(mixer, "Command6"), &right);
    EXPECT_EQ(told.join(u' ').toStdString(), "5 15 30 45 60 Fade-CrossOver to 1 to 2 menu");
}

} // namespace
} // namespace kalvo
