#include "playlists/ui/frmWLEigenschaften.h"

#include "playlists/ListCaption.h"
#include "widgets/SkinStyle.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace kalvo {

namespace {

constexpr int showInterval = 100; // ms

} // namespace

frmWLEigenschaften::frmWLEigenschaften(const Playlist& list, const QString& name, QWidget* parent)
    : QDialog(parent), sums_(list.Entries()) {
    const FontUnits& units = SkinStyle::Units();
    setObjectName(QStringLiteral("frmWLEigenschaften"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Eigenschaften Wiedergabeliste %1 - %2").arg(list.Number()).arg(name));
    auto* form = new QFormLayout;
    form->setHorizontalSpacing(units.Gap(6));
    form->setVerticalSpacing(units.Gap(2));
    AddRow(*form, QStringLiteral("Anzahl Titel:"), QStringLiteral("Label1"))->setText(QString::number(sums_.Titles()));
    QString time = HoursText(sums_.Seconds());
    if (sums_.UnknownDurations() > 0)
        time += QStringLiteral(" (%1 Titel ohne Angabe)").arg(sums_.UnknownDurations());
    AddRow(*form, QStringLiteral("Gesamtspielzeit:"), QStringLiteral("Label2"))->setText(time);
    size_ = AddRow(*form, QStringLiteral("Gesamtgröße:"), QStringLiteral("Label3"));
    missing_ = AddRow(*form, QStringLiteral("Nicht gefundene Dateien:"), QStringLiteral("Label4"));
    auto* buttons = new QDialogButtonBox(this);
    auto* close = buttons->addButton(QStringLiteral("Schließen"), QDialogButtonBox::RejectRole);
    close->setObjectName(QStringLiteral("Command1"));
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(units.Gap(4), units.Gap(4), units.Gap(4), units.Gap(4));
    column->setSpacing(units.Gap(4));
    column->addLayout(form);
    column->addWidget(buttons);
    column->setSizeConstraint(QLayout::SetMinimumSize);
    // The caption names the list: room for it beside the frame's buttons.
    column->addStrut(QFontMetrics(units.Font(1, true)).horizontalAdvance(windowTitle()) + units.Of(7));
    connect(&showing_, &QTimer::timeout, this, &frmWLEigenschaften::ShowFiles);
    showing_.start(showInterval);
    ShowFiles();
}

QLabel* frmWLEigenschaften::AddRow(QFormLayout& form, const QString& caption, const QString& name) {
    auto* label = new QLabel(this);
    label->setObjectName(name);
    label->setAccessibleName(caption);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    form.addRow(caption, label);
    return label;
}

void frmWLEigenschaften::ShowFiles() {
    const bool isDone = sums_.IsDone();
    const QString size = MegabyteText(sums_.Bytes());
    size_->setText(isDone ? size : size + QStringLiteral(" (%1%)").arg(sums_.Percent()));
    missing_->setText(QString::number(sums_.MissingFiles()));
    if (isDone)
        showing_.stop();
}

} // namespace kalvo
