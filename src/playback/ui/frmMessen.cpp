#include "playback/ui/frmMessen.h"

#include "playback/TempoRun.h"
#include "widgets/MainButton.h"
#include "widgets/Mnemonics.h"
#include "widgets/SkinStyle.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace kalvo {

namespace {

QString CountText(std::size_t count) {
    return QLocale(QLocale::German).toString(static_cast<qulonglong>(count));
}

} // namespace

frmMessen::frmMessen(TempoRun& run, Titles marked, Titles all, QWidget* parent)
    : QDialog(parent),
      run_(run),
      marked_(std::move(marked)),
      all_(std::move(all)),
      onlyMarked_(new QRadioButton(tr("Die markierten Titel des Musikarchivs"), this)),
      everything_(new QRadioButton(tr("Alle Titel, bei denen BPM fehlt"), this)),
      bar_(new QProgressBar(this)),
      percent_(new QLabel(tr("0 %"), this)),
      state_(new QLabel(this)) {
    setObjectName(QStringLiteral("frmMessen"));
    setWindowTitle(tr("BPM und Lautheit messen"));
    const auto name = [](QWidget* widget, const char* objectName, const QString& spoken) {
        widget->setObjectName(QLatin1String(objectName));
        widget->setAccessibleName(spoken);
    };
    name(onlyMarked_, "optMarkierte", onlyMarked_->text());
    name(everything_, "optAlle", everything_->text());
    name(bar_, "ProgressBar1", tr("Fortschritt"));
    name(percent_, "lblProzent", tr("Fortschritt in Prozent"));
    name(state_, "lblStand", tr("Stand der Messung"));
    (marked_().size() > 1 ? onlyMarked_ : everything_)->setChecked(true);
    bar_->setTextVisible(false);
    state_->setWordWrap(true);
    auto* progress = new QHBoxLayout;
    progress->addWidget(bar_, 1);
    progress->addWidget(percent_);
    auto* column = new QVBoxLayout(this);
    column->addWidget(onlyMarked_);
    column->addWidget(everything_);
    column->addLayout(progress);
    column->addWidget(state_, 1);
    column->addLayout(BuildButtons());
    connect(&run_, &TempoRun::Progressed, this, &frmMessen::ShowState);
    connect(&run_, &TempoRun::Finished, this, &frmMessen::ShowState);
    ApplyLook();
    ShowState();
    (onlyMarked_->isChecked() ? onlyMarked_ : everything_)->setFocus();
}

frmMessen::~frmMessen() {
    run_.disconnect(this);
    run_.Cancel();
}

QLayout* frmMessen::BuildButtons() {
    auto* row = new QHBoxLayout;
    row->setSpacing(SkinStyle::Units().Gap(2));
    begin_ = new QPushButton(tr("Messen"), this);
    begin_->setObjectName(QStringLiteral("cmdMessen"));
    MakeMain(*begin_);
    cancel_ = new QPushButton(this);
    cancel_->setObjectName(QStringLiteral("cmdAbbrechen"));
    cancel_->setAutoDefault(false);
    begin_->setAccessibleName(begin_->text());
    row->addStretch(1);
    row->addWidget(cancel_);
    row->addWidget(begin_);
    connect(begin_, &QPushButton::clicked, this, &frmMessen::Begin);
    connect(cancel_, &QPushButton::clicked, this, [this] { run_.IsRunning() ? run_.Cancel() : reject(); });
    return row;
}

void frmMessen::Begin() {
    run_.Start(onlyMarked_->isChecked() ? marked_() : all_());
    ShowState();
}

void frmMessen::ShowState() {
    const bool running = run_.IsRunning();
    const std::size_t count = run_.Count();
    const int percent = count == 0 ? 0 : static_cast<int>(100 * run_.Done() / count);
    bar_->setValue(percent);
    percent_->setText(tr("%1 %").arg(percent));
    begin_->setEnabled(!running);
    onlyMarked_->setEnabled(!running);
    everything_->setEnabled(!running);
    ShowCaption(*cancel_, running ? tr("Abbrechen") : tr("Schließen"));
    cancel_->setAccessibleName(cancel_->text());
    if (count == 0 && !running)
        state_->setText(tr("Die Musik spielt dabei weiter. Was schon BPM hat, bleibt, wie es ist."));
    else
        state_->setText(tr("%1 von %2 Titeln, %3 gemessen, %4 nicht messbar")
                            .arg(CountText(run_.Done()), CountText(count))
                            .arg(run_.Found())
                            .arg(run_.Failed()));
}

void frmMessen::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::StyleChange && begin_ != nullptr)
        ApplyLook();
}

void frmMessen::ApplyLook() {
    const FontUnits& units = SkinStyle::Units();
    layout()->setContentsMargins(units.Gap(4), units.Gap(4), units.Gap(4), units.Gap(4));
    layout()->setSpacing(units.Gap(3));
    percent_->setMinimumWidth(units.Of(3.2));
    percent_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    state_->setMinimumSize(units.Of(28), 2 * fontMetrics().lineSpacing() + units.G()); // two lines
    for (QPushButton* button : {begin_, cancel_})
        button->setMinimumWidth(units.Of(7.2));
}

} // namespace kalvo
