#include "playback/ui/frmEqualizer.h"

#include "playback/EqualiserPresets.h"
#include "widgets/BandSlider.h"
#include "widgets/CheckButton.h"
#include "widgets/Mnemonics.h"
#include "widgets/SkinStyle.h"

#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QSignalBlocker>

namespace kalvo {

namespace {

constexpr int kHalf = EqualiserSettings::kFlat;

QString FrequencyText(int hertz) {
    return hertz < 1000 ? QString::number(hertz) : QStringLiteral("%1k").arg(hertz / 1000);
}

/** "+4,5", "0", "−15"; in dB. */
QString GainText(int step) {
    const auto gain = static_cast<double>(static_cast<float>(qAbs(step)) * EqualiserSettings::kStep);
    const QString sign = step > 0 ? QStringLiteral("+") : step < 0 ? QString(QChar(0x2212)) : QString();
    return sign + QLocale(QLocale::German).toString(gain, 'g', 3);
}

QString ReverbText(int amount) {
    return QStringLiteral("%1 %").arg(amount * 100 / EqualiserSettings::kDry);
}

template<typename Widget>
Widget* Named(Widget* widget, const QString& name, const QString& spoken) {
    widget->setObjectName(name);
    widget->setAccessibleName(spoken);
    return widget;
}

} // namespace

frmEqualizer::frmEqualizer(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmEqualizer"));
    setWindowTitle(tr("Equalizer"));
    auto* column = new QVBoxLayout(this);
    column->addWidget(BuildHead());
    column->addWidget(BuildBands(), 1);
    column->addLayout(BuildButtons());
    ConnectBands();
    ApplyLook();
    Show(shown_);
}

QWidget* frmEqualizer::BuildHead() {
    auto* head = new QWidget(this);
    auto* row = new QHBoxLayout(head);
    row->setContentsMargins({});
    status_ = Named(new CheckButton({}, head), QStringLiteral("EQStatus"), tr("Equalizer ein- und ausschalten"));
    presets_ = Named(new QComboBox(head), QStringLiteral("cboVorlage"), tr("Vorlage"));
    for (const EqualiserPreset& preset : EqualiserPresets::All())
        presets_->addItem(QString::fromUtf16(preset.name));
    presets_->addItem(tr("Eigene"));
    auto* caption = new QLabel(tr("Vorlage"), head);
    caption->setForegroundRole(QPalette::PlaceholderText);
    caption->setBuddy(presets_);
    row->addWidget(status_);
    row->addStretch(1);
    row->addWidget(caption);
    row->addWidget(presets_);
    connect(status_, &QCheckBox::toggled, this, [this](bool on) {
        EqualiserSettings changed = shown_;
        changed.on = on;
        Change(changed);
    });
    connect(presets_, &QComboBox::activated, this, &frmEqualizer::ChoosePreset);
    return head;
}

QWidget* frmEqualizer::BuildBands() {
    auto* all = new QWidget(this);
    auto* grid = new QGridLayout(all);
    grid->setContentsMargins({});
    const auto addScale = [&](int row, const QString& text, Qt::Alignment place) {
        auto* label = new QLabel(text, all);
        label->setForegroundRole(QPalette::PlaceholderText);
        grid->addWidget(label, row, 0, Qt::AlignRight | place);
    };
    addScale(0, tr("dB"), Qt::AlignVCenter);
    addScale(1, GainText(kHalf), Qt::AlignTop);
    addScale(2, GainText(0), Qt::AlignVCenter);
    addScale(3, GainText(-kHalf), Qt::AlignBottom);
    addScale(4, tr("Hz"), Qt::AlignVCenter);
    for (int band = 0; band < kEqualiserBands; ++band) {
        const int hertz = kBandFrequencies.at(static_cast<std::size_t>(band));
        bands_.at(static_cast<std::size_t>(band)) = AddColumn(*grid, band + 1, QStringLiteral("Band%1").arg(hertz),
                                                              FrequencyText(hertz), tr("Band %1 Hz").arg(hertz));
        bands_.at(static_cast<std::size_t>(band)).slider->setRange(-kHalf, kHalf);
    }
    reverb_ = AddColumn(*grid, kEqualiserBands + 2, QStringLiteral("Hall"), tr("Hall"), tr("Hall"));
    reverb_.slider->setRange(0, EqualiserSettings::kDry);
    for (int column = 1; column <= kEqualiserBands + 2; ++column)
        grid->setColumnStretch(column, 1);
    for (int row = 1; row <= 3; ++row)
        grid->setRowStretch(row, 1);
    return all;
}

/** Value, slider over three rows, caption. */
frmEqualizer::Column frmEqualizer::AddColumn(QGridLayout& grid, int column, const QString& name, const QString& caption,
                                             const QString& spoken) {
    auto* value = new QLabel(grid.parentWidget());
    auto* below = new QLabel(caption, grid.parentWidget());
    auto* slider = Named(new BandSlider(grid.parentWidget()), name, spoken);
    value->setAlignment(Qt::AlignCenter);
    below->setAlignment(Qt::AlignCenter);
    below->setBuddy(slider);
    grid.addWidget(value, 0, column);
    grid.addWidget(slider, 1, column, 3, 1, Qt::AlignHCenter);
    grid.addWidget(below, 4, column);
    return {slider, value};
}

QLayout* frmEqualizer::BuildButtons() {
    auto* row = new QHBoxLayout;
    neutral_ = Named(new QPushButton(tr("Zurücksetzen"), this), QStringLiteral("cmdNeutral"),
                     tr("Alle Bänder auf 0 dB, kein Hall"));
    neutral_->setToolTip(neutral_->accessibleName());
    close_ = Named(new QPushButton(tr("Schließen"), this), QStringLiteral("cmdSchliessen"), tr("Schließen"));
    for (QPushButton* button : {neutral_, close_})
        button->setAutoDefault(false);
    row->addWidget(neutral_);
    row->addStretch(1);
    row->addWidget(close_);
    connect(neutral_, &QPushButton::clicked, this, [this] {
        EqualiserSettings flat;
        flat.on = shown_.on;
        Change(flat);
    });
    connect(close_, &QPushButton::clicked, this, &QDialog::close);
    return row;
}

void frmEqualizer::ConnectBands() {
    for (std::size_t band = 0; band < bands_.size(); ++band) {
        connect(bands_.at(band).slider, &QSlider::valueChanged, this, [this, band](int step) {
            EqualiserSettings changed = shown_;
            changed.bands.at(band) = kHalf + step;
            Change(changed);
        });
    }
    connect(reverb_.slider, &QSlider::valueChanged, this, [this](int amount) {
        EqualiserSettings changed = shown_;
        changed.reverb = EqualiserSettings::kDry - amount;
        Change(changed);
    });
}

void frmEqualizer::ChoosePreset(int index) {
    const auto presets = EqualiserPresets::All();
    EqualiserSettings changed = shown_;
    if (index < static_cast<int>(presets.size()))
        changed.bands = presets[static_cast<std::size_t>(index)].bands;
    Change(changed);
}

void frmEqualizer::Change(const EqualiserSettings& settings) {
    const bool isChange = settings != shown_;
    Show(settings);
    if (isChange)
        Q_EMIT Changed();
}

void frmEqualizer::Show(const EqualiserSettings& settings) {
    shown_ = settings;
    const auto show = [](const Column& column, int value, const QString& text) {
        const QSignalBlocker silent(column.slider);
        column.slider->setValue(value);
        column.value->setText(text);
    };
    for (std::size_t band = 0; band < bands_.size(); ++band) {
        const int step = settings.bands.at(band) - kHalf;
        show(bands_.at(band), step, GainText(step));
    }
    const int amount = EqualiserSettings::kDry - settings.reverb;
    show(reverb_, amount, ReverbText(amount));
    const QSignalBlocker silent(status_);
    status_->setChecked(settings.on);
    ShowCaption(*status_, settings.on ? tr("Equalizer an") : tr("Equalizer aus"));
    const int preset = EqualiserPresets::Find(settings.bands);
    presets_->setCurrentIndex(preset < 0 ? presets_->count() - 1 : preset);
}

void frmEqualizer::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::StyleChange && close_ != nullptr)
        ApplyLook();
}

void frmEqualizer::ApplyLook() {
    const FontUnits& units = SkinStyle::Units();
    layout()->setContentsMargins(units.Gap(4), units.Gap(4), units.Gap(4), units.Gap(4));
    layout()->setSpacing(units.Gap(4));
    auto* grid = qobject_cast<QGridLayout*>(reverb_.slider->parentWidget()->layout());
    grid->setHorizontalSpacing(units.Gap(1));
    grid->setVerticalSpacing(units.Gap(1));
    grid->setColumnMinimumWidth(kEqualiserBands + 1, units.Of(1.5));
    const int column = units.Of(3.4);
    for (const Column& band : bands_)
        band.value->setMinimumWidth(column);
    reverb_.value->setMinimumWidth(column);
    status_->setMinimumWidth(units.Of(9));
    presets_->setMinimumWidth(units.Of(13));
    for (QPushButton* button : {neutral_, close_})
        button->setMinimumWidth(units.Of(7.2));
}

} // namespace kalvo
