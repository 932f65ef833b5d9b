#include "app/frmStart.h"

#include "widgets/Icons.h"
#include "widgets/MainButton.h"
#include "widgets/SkinStyle.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace kalvo {

namespace {

template<typename Widget>
Widget* Named(Widget* widget, const char* name, const QString& accessibleName) {
    widget->setObjectName(QLatin1String(name));
    widget->setAccessibleName(accessibleName);
    return widget;
}

QLayout* Head(QWidget* parent) {
    const FontUnits& units = SkinStyle::Units();
    auto* sign = new QLabel(parent);
    sign->setPixmap(Icons::Pixmap(QStringLiteral("app"), {}, units.Of(3.4), parent->devicePixelRatioF()));
    auto* question = new QLabel(QStringLiteral("Womit möchten Sie arbeiten?"), parent);
    question->setFont(units.Font(1.3, true));
    auto* row = new QHBoxLayout;
    row->setSpacing(units.Gap(4));
    row->addWidget(sign);
    row->addWidget(question, 1);
    return row;
}

} // namespace

frmStart::frmStart(const QString& documents, const PlayerOffer& offer, QWidget* parent)
    : QDialog(parent),
      program_(Named(new QRadioButton(QStringLiteral("&Mischpult mit zwei Playern"), this), "Option1",
                     QStringLiteral("Mischpult mit zwei Playern"))),
      player_(Named(new QRadioButton(QStringLiteral("&Einzelner Player"), this), "Option2",
                    QStringLiteral("Einzelner Player"))),
      reason_(Named(new QLabel(offer.reason, this), "Label2", QStringLiteral("Hinweis zum einzelnen Player"))),
      documents_(Named(new QLabel(documents, this), "Label19", QStringLiteral("Ordner der Daten"))),
      start_(Named(new QPushButton(QStringLiteral("&Starten"), this), "MyButton1", QStringLiteral("Starten"))) {
    setObjectName(QStringLiteral("frmStart"));
    setWindowTitle(QStringLiteral("Startoption Player-Auswahl"));
    program_->setChecked(true);
    player_->setEnabled(offer.enabled);
    MakeMain(*start_);
    start_->setFocus();
    connect(start_, &QPushButton::clicked, this, &QDialog::accept);
    Compose();
}

void frmStart::Compose() {
    const FontUnits& units = SkinStyle::Units();
    reason_->setTextFormat(Qt::PlainText);
    reason_->setWordWrap(true);
    reason_->setMinimumWidth(units.Of(30));
    reason_->setContentsMargins(units.Of(1.8), 0, 0, 0);
    reason_->setVisible(!reason_->text().isEmpty());
    documents_->setTextFormat(Qt::PlainText);
    documents_->setWordWrap(true);
    documents_->setForegroundRole(QPalette::PlaceholderText);
    start_->setMinimumWidth(units.Of(9));
    auto* foot = new QHBoxLayout;
    foot->setSpacing(units.Gap(4));
    foot->addWidget(documents_, 1);
    foot->addWidget(start_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(units.Gap(4), units.Gap(4), units.Gap(4), units.Gap(4));
    column->setSpacing(units.Gap(3));
    column->addLayout(Head(this));
    column->addSpacing(units.Gap(2));
    column->addWidget(program_);
    column->addWidget(player_);
    column->addWidget(reason_);
    column->addSpacing(units.Gap(2));
    column->addLayout(foot);
    column->setSizeConstraint(QLayout::SetFixedSize);
}

bool frmStart::IsPlayerChosen() const {
    return player_->isEnabled() && player_->isChecked();
}

} // namespace kalvo
