#include "archive/ui/frmExplorer.h"

#include "widgets/SkinStyle.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

namespace kalvo {

frmExplorer::frmExplorer(Archive& archive, const DataFolder& folder, QWidget* parent)
    : QDialog(parent),
      build_(new CategoryBuild(archive, folder, this)),
      text_(new QLabel(this)),
      progress_(new QProgressBar(this)),
      cancel_(new QPushButton(tr("Abbrechen"), this)) {
    setObjectName(QStringLiteral("frmExplorer"));
    setWindowTitle(tr("Kategorien des Musikarchivs"));
    const FontUnits& units = SkinStyle::Units();
    text_->setObjectName(QStringLiteral("Label1"));
    text_->setAccessibleName(tr("Fortschritt"));
    text_->setWordWrap(true);
    text_->setMinimumWidth(units.Of(20));
    progress_->setObjectName(QStringLiteral("ProgressBar1"));
    progress_->setAccessibleName(tr("Fortschritt"));
    progress_->setTextVisible(false);
    progress_->setFixedHeight(units.Of(1.35));
    cancel_->setObjectName(QStringLiteral("Command1"));
    cancel_->setAccessibleName(tr("Abbrechen oder schließen"));
    cancel_->setMinimumWidth(units.Of(7.2));
    connect(cancel_, &QPushButton::clicked, this, &frmExplorer::reject);
    connect(build_, &CategoryBuild::Progress, this, &frmExplorer::ShowProgress);
    connect(build_, &CategoryBuild::Finished, this, &frmExplorer::End);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cancel_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(units.Gap(4), units.Gap(4), units.Gap(4), units.Gap(4));
    column->setSpacing(units.Gap(3));
    column->addWidget(text_);
    column->addWidget(progress_);
    column->addLayout(buttons);
    resize(units.Of(30), sizeHint().height());
    ShowProgress(0);
}

frmExplorer::~frmExplorer() {
    build_->disconnect(this); // its last word would find half of the window gone
}

void frmExplorer::Start() {
    cancel_->setText(tr("Abbrechen"));
    ShowProgress(0);
    build_->Start();
}

void frmExplorer::reject() {
    if (build_->IsRunning())
        build_->Cancel();
    else
        QDialog::reject();
}

void frmExplorer::ShowProgress(int percent) {
    text_->setText(tr("Kategorien werden gelesen: ") + QString::number(percent) + QStringLiteral(" %"));
    progress_->setValue(percent);
}

void frmExplorer::End(CategoryBuild::Outcome outcome, const QString& reason) {
    if (outcome == CategoryBuild::Outcome::Failed) {
        text_->setText(reason);
        cancel_->setText(tr("Schließen"));
        return;
    }
    if (outcome == CategoryBuild::Outcome::Written)
        Q_EMIT Built();
    close();
}

} // namespace kalvo
