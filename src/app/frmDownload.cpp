#include "app/frmDownload.h"

#include "widgets/SkinStyle.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace kalvo {

namespace {

template<typename Widget>
void Name(Widget* widget, const QString& name, const QString& accessibleName) {
    widget->setObjectName(name);
    widget->setAccessibleName(accessibleName);
}

} // namespace

frmDownload::frmDownload(const ComponentSource& source, const QString& component, QWidget* parent)
    : QDialog(parent),
      fetch_(source),
      component_(component),
      text_(new QLabel(this)),
      percent_(new QLabel(this)),
      progress_(new QProgressBar(this)),
      again_(new QPushButton(tr("Erneut versuchen"), this)),
      close_(new QPushButton(this)) {
    const FontUnits& units = SkinStyle::Units();
    setObjectName(QStringLiteral("frmDownload"));
    setWindowTitle(tr("Komponente herunterladen"));
    Name(text_, QStringLiteral("Label1"), tr("Stand des Downloads"));
    text_->setTextFormat(Qt::PlainText);
    text_->setWordWrap(true);
    text_->setMinimumSize(units.Of(30), units.Of(4.2));
    text_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    Name(percent_, QStringLiteral("Label2"), tr("Fortschritt in Prozent"));
    percent_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    percent_->setMinimumWidth(percent_->fontMetrics().horizontalAdvance(QStringLiteral("100%")));
    Name(progress_, QStringLiteral("ProgressBar1"), tr("Fortschritt"));
    progress_->setTextVisible(false);
    progress_->setFixedHeight(units.Of(1.35));

    auto* row = new QHBoxLayout;
    row->setSpacing(units.Gap(2));
    row->addWidget(progress_, 1);
    row->addWidget(percent_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(units.Gap(4), units.Gap(4), units.Gap(4), units.Gap(4));
    column->setSpacing(units.Gap(3));
    column->addWidget(text_, 1);
    column->addLayout(row);
    column->addLayout(BuildButtons());

    connect(&fetch_, &ComponentFetch::Progress, this, &frmDownload::ShowProgress);
    connect(&fetch_, &ComponentFetch::Finished, this, &frmDownload::ShowEnd);
    Start();
}

QLayout* frmDownload::BuildButtons() {
    Name(again_, QStringLiteral("Command1"), tr("Download erneut versuchen"));
    Name(close_, QStringLiteral("Command2"), tr("Abbrechen oder schließen"));
    close_->setMinimumWidth(SkinStyle::Units().Of(7.2));
    connect(again_, &QPushButton::clicked, this, &frmDownload::Start);
    connect(close_, &QPushButton::clicked, this, &frmDownload::reject);
    auto* row = new QHBoxLayout;
    row->setSpacing(SkinStyle::Units().Gap(2));
    row->addStretch(1);
    row->addWidget(again_);
    row->addWidget(close_);
    return row;
}

bool frmDownload::Run(const QString& component) {
    frmDownload dialog(ComponentSource::OfBuild(), component);
    dialog.exec();
    return dialog.Installed();
}

void frmDownload::Start() {
    running_ = true;
    again_->hide();
    close_->setText(tr("Abbrechen"));
    close_->setDefault(true);
    text_->setText(tr("Die Komponente „%1“ wird heruntergeladen...").arg(component_));
    progress_->setRange(0, 100);
    progress_->setValue(0);
    percent_->setText(QStringLiteral("0%"));
    fetch_.Start(component_);
}

void frmDownload::ShowProgress(const QString& file, int percent) {
    text_->setText(tr("%1 wird heruntergeladen...").arg(file));
    progress_->setRange(0, percent < 0 ? 0 : 100); // without an end it only tells that it goes on
    progress_->setValue(qMax(0, percent));
    percent_->setText(percent < 0 ? QString() : QString::number(percent) + u'%');
}

void frmDownload::ShowEnd(bool installed, const QString& message) {
    running_ = false;
    installed_ = installed;
    text_->setText(installed ? message : message + u'\n' + tr("Es wurde nichts installiert."));
    progress_->setRange(0, 100);
    progress_->setValue(installed ? 100 : 0);
    percent_->setText(installed ? QStringLiteral("100%") : QString());
    again_->setVisible(!installed);
    close_->setText(tr("Schließen"));
}

void frmDownload::reject() {
    if (running_)
        fetch_.Cancel();
    else
        QDialog::reject();
}

} // namespace kalvo
