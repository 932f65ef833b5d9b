#include "app/frmTasten.h"

#include "widgets/Named.h"
#include "widgets/ScreenFit.h"
#include "widgets/SkinStyle.h"
#include "widgets/TextTable.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace kalvo {

frmTasten::frmTasten(QList<ShortcutEntry> entries, QWidget* parent)
    : QDialog(parent),
      entries_(std::move(entries)),
      search_(Named(new QLineEdit(this), QStringLiteral("txtSuche"), QStringLiteral("Tasten und Befehle suchen"))),
      model_(new TextTableModel({QStringLiteral("Befehl"), QStringLiteral("Tasten"), QStringLiteral("Wo")}, {}, this)) {
    setObjectName(QStringLiteral("frmTasten"));
    setWindowTitle(QStringLiteral("Tastenübersicht"));
    const FontUnits& units = SkinStyle::Units();
    search_->setPlaceholderText(QStringLiteral("Suchen"));
    search_->setToolTip(QStringLiteral("Befehl, Taste oder Menü, auch in Teilen"));
    connect(search_, &QLineEdit::textChanged, this, &frmTasten::ShowMatching);
    auto* table = Named(new TextTable(*model_, {0, 15, 13}, this), QStringLiteral("lstTasten"),
                        QStringLiteral("Tasten und Befehle"));
    auto* close = Named(new QPushButton(QStringLiteral("&Schließen"), this), QStringLiteral("cmdSchliessen"),
                        QStringLiteral("Schließen"));
    close->setAutoDefault(false);
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(close);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(units.Gap(4), units.Gap(4), units.Gap(4), units.Gap(4));
    column->setSpacing(units.Gap(3));
    column->addWidget(search_);
    column->addWidget(table, 1);
    column->addLayout(buttons);
    ResizeOnScreen(*this, {units.Of(58), units.Of(42)});
    ShowMatching({});
}

void frmTasten::ShowMatching(const QString& needle) {
    QList<QStringList> rows;
    const QList<ShortcutEntry> matching = MatchingShortcuts(entries_, needle);
    for (const ShortcutEntry& entry : matching)
        rows.append({entry.command, entry.keys, entry.place});
    model_->SetRows(rows);
}

} // namespace kalvo
