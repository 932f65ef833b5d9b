#include "app/frmHallo.h"

#include "widgets/ElidedLabel.h"
#include "widgets/Icons.h"
#include "widgets/SkinStyle.h"

#include <QApplication>
#include <QDialog>
#include <QGridLayout>
#include <QLabel>
#include <QScreen>

namespace kalvo {

frmHallo::frmHallo(const QString& version, QWidget* parent)
    : QWidget(parent, Qt::SplashScreen), version_(new QLabel(this)), progress_(new ElidedLabel(this)) {
    const FontUnits& units = SkinStyle::Units();
    setObjectName(QStringLiteral("frmHallo"));
    setWindowTitle(QStringLiteral("Kalvo"));
    auto* sign = new QLabel(this);
    sign->setPixmap(Icons::Pixmap(QStringLiteral("app"), {}, units.Of(5), devicePixelRatioF()));
    auto* name = new QLabel(QStringLiteral("Kalvo"), this);
    name->setFont(units.Font(2.2, true));
    version_->setObjectName(QStringLiteral("lblVersion"));
    version_->setText(QStringLiteral("Version ") + version);
    progress_->setObjectName(QStringLiteral("lblFortschritt"));
    progress_->setAccessibleName(QStringLiteral("Fortschritt des Starts"));
    progress_->SetTone(Tone::Dim);
    auto* grid = new QGridLayout(this);
    const int margin = units.Of(2);
    grid->setContentsMargins(margin, margin, margin, margin);
    grid->setHorizontalSpacing(units.Gap(6));
    grid->addWidget(sign, 0, 0, 2, 1);
    grid->addWidget(name, 0, 1, Qt::AlignBottom);
    grid->addWidget(version_, 1, 1, Qt::AlignTop);
    grid->addWidget(progress_, 2, 0, 1, 2);
    grid->setColumnStretch(1, 1);
    setFixedSize(units.Of(30), units.Of(12));
    qApp->installEventFilter(this);
    move(QApplication::primaryScreen()->availableGeometry().center() - rect().center());
}

bool frmHallo::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show && qobject_cast<QDialog*>(watched) != nullptr) {
        hide();
    }
    return QWidget::eventFilter(watched, event);
}

void frmHallo::SetProgress(const QString& text) {
    progress_->SetText(text);
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

} // namespace kalvo
