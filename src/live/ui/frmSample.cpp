#include "live/ui/frmSample.h"

#include "live/ui/PadButton.h"
#include "widgets/IconButton.h"
#include "widgets/RingRoom.h"
#include "widgets/SkinStyle.h"
#include "widgets/VolumeSlider.h"

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QWindow>

#include <algorithm>

namespace kalvo {

namespace {

constexpr int kShowInterval = 50; // ms
constexpr int kColumns = 3;
constexpr int kDefaultReduction = 50; // percent
const QString kSampleSection = QStringLiteral("Sample");
const QString kReduction = QStringLiteral("Pegelabsenkung");

} // namespace

frmSample::frmSample(Sampler& sampler, Settings& settings, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::WindowStaysOnTopHint),
      sampler_(sampler),
      settings_(settings),
      timer1_(new QTimer(this)) {
    setObjectName(QStringLiteral("frmSample"));
    setWindowTitle(QStringLiteral("Sampler"));
    auto* column = new QVBoxLayout(this);
    column->addWidget(BuildPads(), 1);
    column->addLayout(BuildFoot());
    timer1_->setObjectName(QStringLiteral("Timer1"));
    timer1_->setInterval(kShowInterval);
    connect(timer1_, &QTimer::timeout, this, &frmSample::ShowHeld);
    connect(&sampler_, &Sampler::SlotsChanged, this, &frmSample::ShowSlots);
    connect(&sampler_, &Sampler::HeldChanged, this, &frmSample::ShowHeld);
    sampler_.SetReduction(StoredReduction(settings_));
    slider_->setValue(sampler_.Reduction());
    ShowReduction(sampler_.Reduction());
    connect(slider_, &QSlider::valueChanged, this, &frmSample::ShowReduction);
    TakeUnits();
    ShowSlots();
    ShowHeld();
}

frmSample::~frmSample() {
    if (isVisible())
        End(); // with the program
}

int frmSample::StoredReduction(const Settings& settings) {
    return std::clamp(settings.GetNumber(kSampleSection, kReduction, kDefaultReduction), 0, 100);
}

QFrame* frmSample::BuildPads() {
    auto* frame = new RingRoom(this);
    frame->setObjectName(QStringLiteral("Frame1"));
    auto* grid = new QGridLayout(frame);
    grid->setContentsMargins({});
    for (int pad = 1; pad <= kSamplePads; ++pad) {
        const bool isWide = pad == kSamplePads;
        auto* button = new PadButton(pad, isWide, frame);
        pads_.at(static_cast<std::size_t>(pad - 1)) = button;
        const int row = kColumns - 1 - (pad - 1) / kColumns; // as on the keypad: 7 8 9 on top
        isWide ? grid->addWidget(button, kColumns, 0, 1, kColumns) : grid->addWidget(button, row, (pad - 1) % kColumns);
        connect(button, &PadButton::HoldBegan, &sampler_, &Sampler::Press);
        connect(button, &PadButton::HoldEnded, &sampler_, [this](int released) { sampler_.Release(released); });
    }
    return frame;
}

QLayout* frmSample::BuildFoot() {
    auto* row = new QHBoxLayout;
    auto* caption = new QLabel(QStringLiteral("Pegelabsenkung"), this);
    slider_ = new VolumeSlider(this);
    slider_->setObjectName(QStringLiteral("Slider1"));
    slider_->setAccessibleName(QStringLiteral("Pegelabsenkung in Prozent"));
    slider_->setToolTip(QStringLiteral("Um so viel wird die Musik leiser, solange ein Sample gehalten wird"));
    percent_ = new QLabel(this);
    percent_->setObjectName(QStringLiteral("Label1"));
    percent_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* settings = new IconButton(QStringLiteral("settings"), IconButton::Size::Normal, this);
    settings->setObjectName(QStringLiteral("cmdEinstellungen"));
    settings->setAccessibleName(QStringLiteral("Samples zuweisen"));
    settings->setToolTip(QStringLiteral("Samples zuweisen..."));
    settings->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(settings, &IconButton::clicked, this, &frmSample::SettingsRequested);
    row->addWidget(caption);
    row->addWidget(slider_, 1);
    row->addWidget(percent_);
    row->addWidget(settings);
    return row;
}

void frmSample::TakeUnits() {
    const FontUnits& units = SkinStyle::Units();
    const int margin = units.Gap(4);
    layout()->setContentsMargins(margin, margin, margin, margin);
    layout()->setSpacing(units.Gap(2));
    percent_->setFixedWidth(percent_->fontMetrics().horizontalAdvance(QStringLiteral("100 % ")));
    pads_.front()->parentWidget()->layout()->setSpacing(0); // the pads' own margins are the gap
    for (PadButton* pad : pads_)
        pad->updateGeometry();
}

void frmSample::ShowSlots() {
    for (int pad = 1; pad <= kSamplePads; ++pad) {
        const auto index = static_cast<std::size_t>(pad - 1);
        pads_.at(index)->SetSlot(sampler_.Slots().at(index).title, sampler_.IsAssigned(pad));
    }
}

void frmSample::ShowHeld() {
    const int held = sampler_.HeldPad();
    for (int pad = 1; pad <= kSamplePads; ++pad)
        pads_.at(static_cast<std::size_t>(pad - 1))->SetHeld(pad == held, pad == held ? sampler_.Progress() : 0);
    held == 0 ? timer1_->stop() : timer1_->start();
}

void frmSample::ShowReduction(int percent) {
    sampler_.SetReduction(percent);
    percent_->setText(QStringLiteral("%1 % ").arg(percent));
}

void frmSample::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::StyleChange && percent_ != nullptr)
        TakeUnits();
    if (event->type() == QEvent::ActivationChange && !isActiveWindow()) {
        for (PadButton* pad : pads_)
            pad->Release();
    }
}

void frmSample::hideEvent(QHideEvent* event) {
    End();
    QDialog::hideEvent(event);
}

void frmSample::End() {
    sampler_.Release();
    settings_.PutNumber(kSampleSection, kReduction, slider_->value());
}

/** Where the desktop does not move windows by itself, the window follows the pointer. */
void frmSample::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    dragged_ = event->globalPosition().toPoint() - frameGeometry().topLeft();
    dragging_ = windowHandle() == nullptr || !windowHandle()->startSystemMove();
}

void frmSample::mouseMoveEvent(QMouseEvent* event) {
    if (dragging_ && event->buttons().testFlag(Qt::LeftButton))
        move(event->globalPosition().toPoint() - dragged_);
}

} // namespace kalvo
