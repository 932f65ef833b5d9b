#include "widgets/xMessageBox.h"

#include "widgets/Icons.h"
#include "widgets/SkinStyle.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

namespace kalvo {

namespace {

QLabel* SignLabel(xMessageBox::Sign sign, QWidget* parent) {
    auto* label = new QLabel(parent);
    if (sign == xMessageBox::Sign::Program) {
        label->setPixmap(
            Icons::Pixmap(QStringLiteral("app"), {}, SkinStyle::Units().Of(4), parent->devicePixelRatioF()));
        label->setAccessibleName(QStringLiteral("Programm"));
    } else if (sign != xMessageBox::Sign::None) {
        const bool isError = sign == xMessageBox::Sign::Error;
        label->setPixmap(Icons::Pixmap(isError ? QStringLiteral("error") : QStringLiteral("warning"),
                                       SkinStyle::Colours().warning, SkinStyle::Units().Of(2.6),
                                       parent->devicePixelRatioF()));
        label->setAccessibleName(isError ? QStringLiteral("Fehler") : QStringLiteral("Warnung"));
    }
    label->setVisible(sign != xMessageBox::Sign::None);
    return label;
}

QLabel* TextLabel(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(QStringLiteral("lblText"));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setMinimumWidth(SkinStyle::Units().Of(26));
    return label;
}

} // namespace

xMessageBox::xMessageBox(QWidget* parent, const QString& caption, const QString& text, const QStringList& buttons,
                         Sign sign)
    : QDialog(parent) {
    const FontUnits& units = SkinStyle::Units();
    setObjectName(QStringLiteral("xMessageBox"));
    setWindowTitle(caption);
    setModal(true);
    auto* message = new QHBoxLayout;
    message->setSpacing(units.Gap(4));
    message->addWidget(SignLabel(sign, this), 0, Qt::AlignTop);
    message->addWidget(TextLabel(text, this), 1, Qt::AlignTop);
    auto* row = new QHBoxLayout;
    row->setSpacing(units.Gap(2));
    row->addStretch(1);
    AddButtons(*row, buttons.isEmpty() ? QStringList{QStringLiteral("OK")} : buttons.mid(0, 3));
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(units.Gap(4), units.Gap(4), units.Gap(4), units.Gap(4));
    whole->setSpacing(units.Gap(6));
    whole->addLayout(message, 1);
    whole->addLayout(row);
    whole->setSizeConstraint(QLayout::SetFixedSize);
}

void xMessageBox::AddButtons(QHBoxLayout& row, const QStringList& captions) {
    const QString no = QStringLiteral("Nein");
    answer_ = captions.contains(no) ? no : captions.last();
    for (qsizetype i = 0; i < captions.size(); ++i) {
        auto* button = new QPushButton(captions[i], this);
        button->setObjectName(QStringLiteral("Command%1").arg(i + 1));
        button->setMinimumWidth(SkinStyle::Units().Of(7.2));
        connect(button, &QPushButton::clicked, this, [this, caption = captions[i]] {
            answer_ = caption;
            accept();
        });
        row.addWidget(button);
        if (captions[i] == answer_) {
            button->setDefault(true);
            button->setFocus();
        }
    }
}

QString xMessageBox::Ask(QWidget* parent, const QString& caption, const QString& text, const QStringList& buttons,
                         Sign sign) {
    // The parent may go while the question is open; the pointer tells.
    const QPointer<xMessageBox> box = new xMessageBox(parent, caption, text, buttons, sign);
    QString refusal = box->Answer();
    box->exec();
    if (!box)
        return refusal;
    QString answer = box->Answer();
    delete box;
    return answer;
}

} // namespace kalvo
