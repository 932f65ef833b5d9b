#include "app/frmStart.h"

#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

template<typename Widget>
Widget* Find(const frmStart& dialog, const char* name) {
    auto* widget = dialog.findChild<Widget*>(QLatin1String(name));
    EXPECT_NE(widget, nullptr) << name;
    return widget;
}

TEST(frmStart, ShowsTheFolderAndWhyThePlayerIsNotOffered) {
    const QString why = QStringLiteral("Diese Funktion ist erst beim nächsten Start von Kalvo möglich.");
    frmStart dialog(QStringLiteral("/home/dj/Dokumente"), {false, why});
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Startoption Player-Auswahl"));
    EXPECT_EQ(Find<QLabel>(dialog, "Label19")->text(), QStringLiteral("/home/dj/Dokumente"));
    EXPECT_EQ(Find<QLabel>(dialog, "Label2")->text(), why);
    EXPECT_FALSE(Find<QRadioButton>(dialog, "Option2")->isEnabled());
    EXPECT_TRUE(Find<QRadioButton>(dialog, "Option1")->isChecked());
}

TEST(frmStart, TheButtonTakesTheChoiceAndClosingTakesNone) {
    frmStart dialog(QStringLiteral("/home/dj"), {true, {}});
    Find<QRadioButton>(dialog, "Option2")->click();
    EXPECT_TRUE(dialog.IsPlayerChosen());
    Find<QPushButton>(dialog, "MyButton1")->click();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);

    frmStart closed(QStringLiteral("/home/dj"), {true, {}});
    EXPECT_FALSE(closed.IsPlayerChosen());
    closed.show();
    closed.close();
    EXPECT_EQ(closed.result(), QDialog::Rejected);
}

} // namespace
} // namespace kalvo
