#include "app/OptionMeterPage.h"

#include "app/LevelRow.h"
#include "widgets/MeterDisplay.h"

#include <QColor>
#include <QComboBox>
#include <QPixmap>

namespace kalvo {

namespace {

constexpr int kPreviewInterval = 50; // ms
constexpr int swatchSize = 32;       // pixels; shown at the box's icon size

/** The number as settings files keep it: red + 256 green + 65536 blue. */
int NumberOf(const QColor& colour) {
    return colour.red() + (colour.green() << 8) + (colour.blue() << 16);
}

} // namespace

OptionMeterPage::OptionMeterPage(QWidget* parent) : OptionPage(tr("Pegel"), parent) {
    volume_ = AddLevel(QStringLiteral("Lautstärke"), tr("Lautstärke"));
    reduction_ = AddLevel(QStringLiteral("Pegelabsenkung"), tr("Absenkung bei Mikrofon"));
    microphone_ = AddLevel(QStringLiteral("Mikrofonpegel"), tr("Mikrofonpegel"));
    style_ = AddChoice(QStringLiteral("Style"), tr("Pegelanzeige"), OptionValues::MeterStyles());
    colour_ = AddChoice(QStringLiteral("Farbe"), tr("Farbe der Anzeige"), {});
    colour_->addItem(tr("wie der Skin"), OptionValues::kNoColour);
    AddColour(tr("Grün"), NumberOf(QColor(0x3f, 0xca, 0x7c)));
    AddColour(tr("Türkis"), NumberOf(QColor(0x4c, 0xc9, 0xf0)));
    AddColour(tr("Blau"), NumberOf(QColor(0x3a, 0x7b, 0xd5)));
    AddColour(tr("Violett"), NumberOf(QColor(0xb9, 0xa0, 0xff)));
    AddColour(tr("Rot"), NumberOf(QColor(0xff, 0x5a, 0x4f)));
    AddColour(tr("Orange"), NumberOf(QColor(0xff, 0x8c, 0x1a)));
    AddColour(tr("Gelb"), NumberOf(QColor(0xff, 0xd2, 0x3f)));
    AddColour(tr("Weiß"), NumberOf(QColor(0xff, 0xff, 0xff)));
    preview_ = Named(new MeterDisplay(this), QStringLiteral("Vorschau"), tr("Vorschau der Pegelanzeige"));
    AddRow(tr("Vorschau"), preview_);
    AddHint(tr("„wie der Skin“ zeigt leise Pegel grün, laute gelb und übersteuerte rot. Am rechten Rand der Anzeige "
               "leuchtet es rot, wenn ein Kanal übersteuert."));
    moving_.setInterval(kPreviewInterval);
    connect(&moving_, &QTimer::timeout, this, &OptionMeterPage::MovePreview);
    connect(style_, &QComboBox::currentIndexChanged, this, &OptionMeterPage::ShowStyle);
    connect(colour_, &QComboBox::currentIndexChanged, this, &OptionMeterPage::ShowStyle);
    ShowStyle();
}

void OptionMeterPage::showEvent(QShowEvent* event) {
    OptionPage::showEvent(event);
    moving_.start();
}

void OptionMeterPage::hideEvent(QHideEvent* event) {
    OptionPage::hideEvent(event);
    moving_.stop();
}

void OptionMeterPage::ShowStyle() {
    preview_->SetStyle(OptionValues::MeterStyleOf(style_->currentText()));
    preview_->SetColour(OptionValues::ColourOf(colour_->currentData().toInt()));
}

/** Four beats in two seconds, the second channel a little behind, the treble shorter than the bass. */
void OptionMeterPage::MovePreview() {
    constexpr int beat = 10;
    const auto beatOf = [this](int delay) { return static_cast<float>((moment_ + beat - delay) % beat) / beat; };
    MeterReading reading;
    reading.levels = {0.95F - 0.6F * beatOf(0), 0.9F - 0.6F * beatOf(1)};
    reading.clipped[0] = moment_ % (8 * beat) == 0;
    for (std::size_t band = 0; band < kMeterBands; ++band) {
        const float height = static_cast<float>(band) / kMeterBands;
        const auto delay = static_cast<int>(band * 7 % beat);
        reading.bands.at(band) = (0.95F - 0.5F * height) * (1 - (0.3F + 0.6F * height) * beatOf(delay));
    }
    preview_->Show(reading);
    ++moment_;
}

LevelRow* OptionMeterPage::AddLevel(const QString& name, const QString& caption) {
    auto* level = new LevelRow(name, caption, this);
    AddRow(caption, level);
    return level;
}

void OptionMeterPage::AddColour(const QString& name, int colour) {
    QPixmap swatch(swatchSize, swatchSize);
    swatch.fill(OptionValues::ColourOf(colour));
    colour_->addItem(swatch, name, colour);
}

void OptionMeterPage::Show(const OptionValues& values) {
    volume_->SetValue(values.volume);
    reduction_->SetValue(values.levelReduction);
    microphone_->SetValue(values.microphoneLevel);
    style_->setCurrentText(values.meterStyle);
    if (colour_->findData(values.meterColour) < 0)
        AddColour(tr("Eigene Farbe (%1)").arg(OptionValues::ColourOf(values.meterColour).name()), values.meterColour);
    colour_->setCurrentIndex(colour_->findData(values.meterColour));
}

void OptionMeterPage::Take(OptionValues& values) const {
    values.volume = volume_->Value();
    values.levelReduction = reduction_->Value();
    values.microphoneLevel = microphone_->Value();
    values.meterStyle = style_->currentText();
    values.meterColour = colour_->currentData().toInt();
}

} // namespace kalvo
