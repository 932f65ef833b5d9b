#include "live/ui/frmJingleAnzeige.h"

#include "base/FileName.h"
#include "base/PlayTime.h"
#include "widgets/ElidedLabel.h"
#include "widgets/IconButton.h"
#include "widgets/SkinStyle.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QProgressBar>

#include <cmath>

namespace kalvo {

namespace {

constexpr int kSteps = 1000; // of the progress bar

QString Seconds(double seconds) {
    return PlayTime::Format(static_cast<int>(std::floor(seconds)));
}

} // namespace

frmJingleAnzeige::frmJingleAnzeige(JinglePlayer& player, QWidget* parent)
    : QDialog(parent),
      player_(player),
      path_(new ElidedLabel(this)),
      progress_(new QProgressBar(this)),
      time_(new QLabel(this)),
      stop_(new IconButton(QStringLiteral("stop"), IconButton::Size::Big, this)) {
    setObjectName(QStringLiteral("frmJingleAnzeige"));
    setWindowTitle(QStringLiteral("Termin-Play"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    path_->setObjectName(QStringLiteral("Label1"));
    progress_->setObjectName(QStringLiteral("ProgressBar1"));
    progress_->setAccessibleName(QStringLiteral("Position"));
    progress_->setRange(0, kSteps);
    progress_->setTextVisible(false);
    time_->setObjectName(QStringLiteral("Label2"));
    time_->setAccessibleName(QStringLiteral("Zeit"));
    stop_->setObjectName(QStringLiteral("Command1"));
    stop_->setText(QStringLiteral("Termin-Play stoppen"));
    connect(stop_, &QPushButton::clicked, &player_, &JinglePlayer::Stop);
    connect(&player_, &JinglePlayer::Ended, this, &QWidget::hide);
    auto* row = new QHBoxLayout;
    row->addWidget(progress_, 1);
    row->addWidget(time_);
    auto* column = new QVBoxLayout(this);
    column->addWidget(path_);
    column->addLayout(row);
    column->addWidget(stop_);
    TakeUnits();
}

void frmJingleAnzeige::Refresh() {
    const double length = player_.Length();
    const double position = player_.Position();
    const QString name = FileName::Last(player_.Path());
    path_->SetText(player_.Waiting() == 0 ? name : name + QStringLiteral(" (noch %1)").arg(player_.Waiting()));
    path_->setAccessibleName(path_->text());
    progress_->setValue(length > 0 ? static_cast<int>(kSteps * position / length) : 0);
    time_->setText(QStringLiteral("%1/%2").arg(Seconds(position), Seconds(length)));
}

void frmJingleAnzeige::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::StyleChange && stop_ != nullptr)
        TakeUnits();
}

void frmJingleAnzeige::TakeUnits() {
    const FontUnits& units = SkinStyle::Units();
    const int margin = units.Gap(4);
    layout()->setContentsMargins(margin, margin, margin, margin);
    layout()->setSpacing(units.Gap(3));
    path_->setFont(units.Font(1.25, true));
    setMinimumWidth(units.Of(30));
}

} // namespace kalvo
