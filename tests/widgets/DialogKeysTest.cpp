#include "widgets/DialogKeys.h"
#include "widgets/Mnemonics.h"

#include "support/WindowActs.h"

#include <QtWidgets>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

/** A list, a field with its caption and three buttons; made in another order than they are laid out. */
struct DialogKeysTest : ::testing::Test {
    DialogKeysTest() {
        DialogKeys::Install(*qApp);
        list->addItem(u"Lied"_s);
        list->setCurrentRow(0);
        caption->setBuddy(field);
        remove->setAutoDefault(false);
        accept->setDefault(true);
        auto* grid = new QGridLayout(&dialog);
        grid->addWidget(accept, 3, 1);
        grid->addWidget(remove, 3, 0);
        grid->addWidget(field, 0, 1);
        grid->addWidget(caption, 0, 0);
        grid->addWidget(list, 1, 0);
        grid->addWidget(cancel, 1, 1);
        for (QPushButton* button : {accept, remove, cancel})
            QObject::connect(button, &QPushButton::clicked, button, [this, button] { pressed.append(button); });
    }

    QDialog dialog;
    QPushButton* accept = new QPushButton(u"Suchen"_s, &dialog);
    QPushButton* cancel = new QPushButton(u"Abbrechen"_s, &dialog);
    QPushButton* remove = new QPushButton(u"Streichen"_s, &dialog);
    QLineEdit* field = new QLineEdit(&dialog);
    QLabel* caption = new QLabel(u"Suchtext"_s, &dialog);
    QListWidget* list = new QListWidget(&dialog);
    QList<QPushButton*> pressed;
};

TEST_F(DialogKeysTest, CaptionsGetLettersWhenTheyAreShownAndWhenTheyChange) {
    accept->setText(u"&Suchen"_s);
    remove->hide();
    dialog.show();
    EXPECT_EQ(accept->text(), u"&Suchen"_s) << "as given";
    EXPECT_EQ(caption->text(), u"S&uchtext"_s);
    EXPECT_EQ(cancel->text(), u"&Abbrechen"_s);
    EXPECT_EQ(remove->text(), u"Streichen"_s) << "not to be seen";
    remove->show();
    accept->setText(u"Anhalten"_s);
    QApplication::processEvents();
    EXPECT_EQ(remove->text(), u"&Streichen"_s) << "free again";
    EXPECT_EQ(accept->text(), u"A&nhalten"_s);
}

TEST_F(DialogKeysTest, TabFollowsTheLayout) {
    dialog.show();
    QList<QWidget*> order;
    for (QWidget* part = field; order.isEmpty() || part != field; part = part->nextInFocusChain())
        if (part->focusPolicy() & Qt::TabFocus && part->parentWidget() == &dialog)
            order.append(part);
    EXPECT_EQ(order, (QList<QWidget*>{field, list, cancel, remove, accept}));
}

TEST_F(DialogKeysTest, EnterMeansWhatHasTheFocus) {
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
