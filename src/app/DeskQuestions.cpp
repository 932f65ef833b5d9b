#include "app/DeskQuestions.h"

#include "widgets/xMessageBox.h"

namespace kalvo {

void DeskQuestions::Tell(const QString& text) {
    xMessageBox::Ask(&window_, QStringLiteral(" Kalvo"), text, {QStringLiteral("ok")}, xMessageBox::Sign::Warning);
}

QString DeskQuestions::Ask(const QString& caption, const QString& text) {
    return xMessageBox::Ask(&window_, caption, text,
                            {QStringLiteral("Ja"), QStringLiteral("Nein"), QStringLiteral("Abbrechen")},
                            xMessageBox::Sign::Warning);
}

bool DeskQuestions::Confirm(const QString& caption, const QString& text) {
    return xMessageBox::Ask(&window_, caption, text, {QStringLiteral("Ja"), QStringLiteral("Nein")},
                            xMessageBox::Sign::Warning) == QStringLiteral("Ja");
}

} // namespace kalvo
