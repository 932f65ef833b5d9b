#include "widgets/DialogKeys.h"
#include "widgets/Mnemonics.h"

#include "support/WindowActs.h"

#include <QtWidgets>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

TEST(DialogKeysTest, EnterMeansWhatHasTheFocus) {
    DialogKeys::Install(*qApp);
    QDialog dialog;
    auto* accept = new QPushButton(u"Suchen"_s, &dialog);
    auto* cancel = new QPushButton(u"Abbrechen"_s, &dialog);
    auto* remove = new QPushButton(u"Streichen"_s, &dialog);
    auto* field = new QLineEdit(&dialog);
    auto* list = new QListWidget(&dialog);
    list->addItem(u"Lied"_s);
    list->setCurrentRow(0);
    remove->setAutoDefault(false);
    accept->setDefault(true);
    QList<QPushButton*> pressed;
    for (QPushButton* button : {accept, remove, cancel})
        QObject::connect(button, &QPushButton::clicked, button, [&pressed, button] { pressed.append(button); });
    dialog.show();
    dialog.activateWindow();
    QApplication::processEvents();
    for (QWidget* part : std::initializer_list<QWidget*>{remove, field, list, cancel}) {
        remove->setEnabled(part != cancel);
        part->setFocus();
        test::PressKey(*part, Qt::Key_Return, Qt::NoModifier, u"\r"_s);
    }
    EXPECT_EQ(pressed, (QList{remove, accept, cancel})) << "the default for the field only; the list has its own";
}

TEST(MnemonicsTest, EveryTextGetsALetterOfItsOwn) {
    const std::pair<QStringList, QStringList> cases[] = {
        {{u"&Suchen"_s, u"&Drucken"_s}, {u"&Suchen"_s, u"&Drucken"_s}},
        {{u"&Suchen"_s, u"&Sichern"_s}, {u"&Suchen"_s, u"S&ichern"_s}},
        {{u"Suchen"_s, u"&Sichern"_s}, {u"S&uchen"_s, u"&Sichern"_s}},
        {{u"Player 1: &Stop"_s, u"Player 2: &Stop"_s}, {u"Player 1: &Stop"_s, u"&Player 2: Stop"_s}},
        {{u"Rock && Pop"_s}, {u"&Rock && Pop"_s}},
        {{u"a\tEntf"_s, u"a\tEntf"_s}, {u"&a\tEntf"_s, u"a\tEntf"_s}},
        {{QString(), u"..."_s}, {QString(), u"..."_s}},
        {{u"Ändern"_s, u"ändern"_s}, {u"&Ändern"_s, u"ä&ndern"_s}},
    };
    for (const auto& [texts, lettered] : cases)
        EXPECT_EQ(WithMnemonics(texts), lettered) << texts.join(u'|').toStdString();
}

} // namespace
} // namespace kalvo
