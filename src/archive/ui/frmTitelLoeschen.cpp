#include "archive/ui/frmTitelLoeschen.h"

#include "widgets/ElidedLabel.h"
#include "widgets/SkinStyle.h"

#include <QCheckBox>
#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace kalvo {

frmTitelLoeschen::frmTitelLoeschen(const QString& path, QWidget* parent)
    : QDialog(parent), path_(path), withFile_(new QCheckBox(tr("Auch die Datei von der Festplatte löschen"), this)) {
    setObjectName(QStringLiteral("frmTitelLoeschen"));
    setWindowTitle(tr("Titel löschen"));
    const FontUnits& units = SkinStyle::Units();
    auto* shownPath = new ElidedLabel(this);
    shownPath->SetText(QDir::toNativeSeparators(path));
    shownPath->setObjectName(QStringLiteral("lblPfad"));
    shownPath->setAccessibleName(tr("Datei des Titels"));
    shownPath->setFixedWidth(units.Of(36));
    withFile_->setObjectName(QStringLiteral("Check1"));
    withFile_->setAccessibleName(withFile_->text());

    auto* cancel = new QPushButton(tr("Abbrechen"), this);
    cancel->setObjectName(QStringLiteral("Command1"));
    cancel->setMinimumWidth(units.Of(7.2));
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* remove = new QPushButton(tr("Löschen"), this);
    remove->setObjectName(QStringLiteral("Command2"));
    remove->setMinimumWidth(units.Of(7.2));
    remove->setAutoDefault(false);
    connect(remove, &QPushButton::clicked, this, [this] {
        accept();
        Q_EMIT Confirmed(withFile_->isChecked());
    });
    cancel->setDefault(true);
    cancel->setFocus();

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(units.Gap(2));
    buttons->addStretch();
    buttons->addWidget(remove);
    buttons->addWidget(cancel);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(units.Gap(4), units.Gap(4), units.Gap(4), units.Gap(4));
    column->setSpacing(units.Gap(4));
    column->addWidget(new QLabel(tr("Diesen Titel aus dem Musikarchiv löschen?"), this));
    column->addWidget(shownPath);
    column->addWidget(withFile_);
    column->addLayout(buttons);
    column->setSizeConstraint(QLayout::SetFixedSize);
}

} // namespace kalvo
