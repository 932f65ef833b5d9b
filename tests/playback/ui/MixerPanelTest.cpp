#include "playback/ui/MixerPanel.h"
#include "playback/ui/DeckPanel.h"
#include "support/PartOf.h"
#include "widgets/IconButton.h"
#include "widgets/SkinStyle.h"
#include "widgets/TimeLabel.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QFontInfo>
#include <QHBoxLayout>
#include <QSlider>
#include <gmock/gmock.h>

namespace kalvo {
namespace {

using ::testing::ElementsAre;

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
    mixer.SetMode(QStringLiteral("Fade-CrossOver"));
    mixer.SetMode(QStringLiteral("Unknown"));
    mixer.SetSpeed(5);
    mixer.SetSpeed(7);
    mixer.SetContinuous(true);
    mixer.SetAutomatic(true);
    mixer.SetFader(-101);
    mixer.SetFader(-100);
    EXPECT_EQ(told, 0);
    EXPECT_THAT(fader, ElementsAre(-100));
    EXPECT_EQ(Part<QSlider>(mixer, "hscroll1")->value(), 80);
    EXPECT_EQ(Part<QLabel>(mixer, "lblGesamtlautstaerke")->text(), QStringLiteral("80"));
    EXPECT_EQ(Part<QComboBox>(mixer, "cboModus")->currentText(), QStringLiteral("Fade-CrossOver"));
    EXPECT_EQ(Part<QComboBox>(mixer, "cboTempo")->currentText(), QStringLiteral("Tempo: sehr schnell"));
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

TEST(MixerPanelTest, TheHandOverLineTellsBriefAndInFull) {
    MixerPanel mixer;
    auto* line = Part<HandOverLine>(mixer, "lblUebergabe");
    mixer.SetHandOver({HandOverView::Kind::Rest, 0, 9});
    EXPECT_EQ(line->Text(), QStringLiteral("Übergabe 9 s vor Ende"));
    mixer.SetHandOver({HandOverView::Kind::Coming, 2, 2});
    EXPECT_EQ(line->Text(), QStringLiteral("Übergabe an Player 2 in 2 s"));
    mixer.SetLayoutMode(LayoutMode::Narrow);
    EXPECT_EQ(line->Text(), QStringLiteral("Übergabe in 2 s"));
}

/** Deck, mixer and deck side by side as in the main window. */
class Console : public QWidget {
public:
    Console(int width, int height) {
        const FontUnits& units = SkinStyle::Units();
        auto* row = new QHBoxLayout(this);
        row->setContentsMargins(units.Gap(2), 0, units.Gap(2), 0);
        row->setSpacing(units.Gap(2));
        row->addWidget(&deck1, 1);
        row->addWidget(&mixer);
        row->addWidget(&deck2, 1);
        const LayoutMode mode = LayoutModeFor(width, units.F(), height);
        deck1.SetLayoutMode(mode);
        mixer.SetLayoutMode(mode);
        deck2.SetLayoutMode(mode);
        DeckView view;
        view.title = QStringLiteral("Ein Titel mit einem sehr langen Namen, der nirgends hineinpasst");
        view.artist = QStringLiteral("Eine Kapelle mit einem sehr langen Namen");
        view.remaining = QStringLiteral("\u221259:59");
        deck1.SetView(view);
        deck2.SetView(view);
        resize(width, units.ConsoleHeight(mode));
        show();
        QApplication::processEvents();
    }

    DeckPanel deck1{1}, deck2{2};
    MixerPanel mixer;
};

class ConsoleFits : public ::testing::TestWithParam<std::tuple<const char*, const char*, int, int>> {};

TEST_P(ConsoleFits, WithoutCutTextsOrSmallButtons) {
    const auto& [schriftgrad, buttongroesse, width, height] = GetParam();
    SkinStyle::Apply(*qApp, QStringLiteral("Grey"), QString::fromUtf8(schriftgrad), QString::fromLatin1(buttongroesse));
    Console console(width, height);
    EXPECT_EQ(console.width(), width) << "needs more room than the window has";
    EXPECT_LE(console.minimumSizeHint().width(), width);
    EXPECT_LE(console.minimumSizeHint().height(), height / 2) << "lists and archive need the rest";
    for (auto* label : console.findChildren<TimeLabel*>()) {
        if (label->isVisible()) {
            const QFont fitting = label->FittingFont();
            EXPECT_GE(label->width(), QFontMetrics(fitting).horizontalAdvance(label->text()))
                << label->objectName().toStdString();
            EXPECT_GE(QFontInfo(fitting).pixelSize(), 0.75 * QFontInfo(label->font()).pixelSize())
                << label->objectName().toStdString();
        }
    }
    for (auto* button : console.findChildren<QAbstractButton*>()) {
        if (!button->isVisible())
            continue;
        const QString name = button->objectName();
        EXPECT_GE(button->width(), button->sizeHint().width()) << name.toStdString();
        EXPECT_GE(button->height(), button->sizeHint().height()) << name.toStdString();
        if (qobject_cast<IconButton*>(button)) {
            EXPECT_GE(qMin(button->width(), button->height()), 44) << name.toStdString();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Sizes, ConsoleFits,
    ::testing::Values(std::tuple("klein", "klein", 800, 600), std::tuple("mittel", "klein", 800, 600),
                      std::tuple("groß", "klein", 800, 600), std::tuple("groß", "gross", 800, 600),
                      std::tuple("groß", "gross", 800, 1000), std::tuple("klein", "klein", 1280, 800),
                      std::tuple("groß", "gross", 1280, 800), std::tuple("mittel", "gross", 1920, 1080),
                      std::tuple("klein", "gross", 992, 740), std::tuple("klein", "klein", 1024, 560)));

} // namespace
} // namespace kalvo
