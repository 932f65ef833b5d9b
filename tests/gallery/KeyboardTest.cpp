#include "gallery/AccessFaults.h"
#include "gallery/GalleryTest.h"
#include "gallery/GalleryWindows.h"
#include "gallery/KeyboardFaults.h"
#include "widgets/Spoken.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;
using namespace test::KeyboardFaults;
namespace AccessFaults = test::AccessFaults;

void ExpectWorkedByKeys(const QString& name, QWidget& window) {
    QStringList faults = FirstFocus(window) + TabOrder(window);
    if (qobject_cast<QMainWindow*>(&window) == nullptr) // its letters are those of the menus
        faults += DefaultButtons(window) + Letters(window);
    faults += AccessFaults::Nameless(window) + AccessFaults::Unexplained(window);
    if (qobject_cast<QDialog*>(&window) != nullptr)
        faults += Escape(window);
    EXPECT_TRUE(faults.isEmpty()) << name.toStdString() << ":\n  " << faults.join(u"\n  "_s).toStdString();
}

TEST_F(GalleryTest, EveryWindowIsWorkedByKeysAndExplainsItself) {
    desk->Window().resize(800, 600);
    desk->ShowLook(u"Light Green"_s, u"klein"_s);
    Spoken::Install();
    for (const test::GalleryWindow& window : test::GalleryWindows())
        window.show(*desk, ExpectWorkedByKeys);
}

/** A dialog of two fields, a text and two buttons, as it ought to be. */
struct KeyboardFaultsTest : ::testing::Test {
    KeyboardFaultsTest() {
        auto* column = new QVBoxLayout(&dialog);
        auto* caption = new QLabel(u"&Name"_s);
        caption->setBuddy(name);
        for (QWidget* part : std::initializer_list<QWidget*>{caption, name, text, clear, accept})
            column->addWidget(part);
        text->setTabChangesFocus(true);
        clear->setAutoDefault(false);
        accept->setDefault(true);
        dialog.show();
        QApplication::processEvents();
    }

    QDialog dialog;
    QLineEdit* name = new QLineEdit(&dialog);
    QPlainTextEdit* text = new QPlainTextEdit(&dialog);
    QPushButton* clear = new QPushButton(u"&Liste leeren"_s, &dialog);
    QPushButton* accept = new QPushButton(u"&Fertig"_s, &dialog);
};

TEST_F(KeyboardFaultsTest, FindNothingInASoundDialog) {
    EXPECT_EQ(TabOrder(dialog) + Letters(dialog) + DefaultButtons(dialog) + FirstFocus(dialog), QStringList());
    EXPECT_EQ(dialog.focusWidget(), name) << "as before";
    EXPECT_EQ(Escape(dialog), QStringList());
}

TEST_F(KeyboardFaultsTest, FindWhatTabDoesWrong) {
    text->setTabChangesFocus(false);
    EXPECT_EQ(TabOrder(dialog).size(), 1) << "kept in the text";
    text->setTabChangesFocus(true);
    QWidget::setTabOrder(accept, clear);
    EXPECT_EQ(TabOrder(dialog).size(), 1) << "upwards";
    QWidget::setTabOrder(clear, accept);
    clear->setFocusPolicy(Qt::ClickFocus);
    EXPECT_EQ(TabOrder(dialog).size(), 1) << "passed over";
}

TEST_F(KeyboardFaultsTest, FindWrongLettersButtonsAndFocus) {
    accept->setText(u"&Los"_s);
    EXPECT_EQ(Letters(dialog).size(), 1) << "twice L";
    accept->setText(u"Fertig"_s);
    EXPECT_EQ(Letters(dialog).size(), 1) << "none";
    clear->setAutoDefault(true);
    EXPECT_EQ(DefaultButtons(dialog).size(), 1);
    clear->setFocus();
    EXPECT_EQ(FirstFocus(dialog).size(), 1);
}

} // namespace
} // namespace kalvo
