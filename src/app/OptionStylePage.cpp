#include "app/OptionStylePage.h"

#include "widgets/Skin.h"

#include <QComboBox>

namespace kalvo {

OptionStylePage::OptionStylePage(QWidget* parent) : OptionPage(tr("Aussehen"), parent) {
    skin_ = AddChoice(QStringLiteral("Skin"), tr("Skin"), Skins::Names());
    fontSize_ = AddChoice(QStringLiteral("Schriftgrad"), tr("Schriftgrad"),
                          {QStringLiteral("klein"), QStringLiteral("mittel"), QStringLiteral("groß")});
    buttonSize_ = AddChoice(QStringLiteral("Buttongroesse"), tr("Buttongröße"), {});
    buttonSize_->addItem(QStringLiteral("klein"), QStringLiteral("klein"));
    buttonSize_->addItem(QStringLiteral("groß"), QStringLiteral("gross"));
    AddHint(tr("Das Aussehen wechselt sofort. „Abbrechen“ stellt das alte wieder her."));
    for (QComboBox* choice : {skin_, fontSize_, buttonSize_})
        connect(choice, &QComboBox::activated, this, &OptionStylePage::Chosen);
}

void OptionStylePage::Show(const OptionValues& values) {
    skin_->setCurrentText(values.skin);
    fontSize_->setCurrentText(values.fontSize);
    buttonSize_->setCurrentIndex(buttonSize_->findData(values.buttonSize));
}

void OptionStylePage::Take(OptionValues& values) const {
    values.skin = skin_->currentText();
    values.fontSize = fontSize_->currentText();
    values.buttonSize = buttonSize_->currentData().toString();
}

} // namespace kalvo
