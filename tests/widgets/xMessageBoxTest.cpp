#include "widgets/xMessageBox.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QTimer>
#include <functional>
#include <gmock/gmock.h>

namespace kalvo {
namespace {

const QStringList three{QStringLiteral("Ja"), QStringLiteral("Nein"), QStringLiteral("Abbrechen")};

/** Acts on the open question as soon as the event loop runs, and tells the answer. */
QString AskAndDo(const QStringList& buttons, const std::function<void(xMessageBox&)>& act) {
    QTimer::singleShot(0, qApp, [&act] {
        auto* box = qobject_cast<xMessageBox*>(QApplication::activeModalWidget());
        ASSERT_TRUE(box);
        act(*box);
    });
    return xMessageBox::Ask(nullptr, QStringLiteral(" Achtung!"), QStringLiteral("Titel: <b>A & B</b>"), buttons);
}

void PressEscape(xMessageBox& box) {
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(&box, &press);
}

TEST(xMessageBoxTest, TheAnswerIsThePressedCaption) {
    for (int i = 0; i < 3; ++i) {
        const QString name = QStringLiteral("Command%1").arg(i + 1);
        EXPECT_EQ(AskAndDo(three, [&](xMessageBox& box) { box.findChild<QPushButton*>(name)->click(); }), three[i]);
    }
}

TEST(xMessageBoxTest, EscAndTheCloseBoxNeverSayYes) {
    const std::pair<QStringList, QString> cases[] = {
        {three, QStringLiteral("Nein")},
        {{QStringLiteral("Ja"), QStringLiteral("Nein")}, QStringLiteral("Nein")},
        {{QStringLiteral("ok")}, QStringLiteral("ok")},
        {{QStringLiteral("Weiter"), QStringLiteral("Abbrechen")}, QStringLiteral("Abbrechen")},
        {{}, QStringLiteral("OK")}};
    for (const auto& [buttons, answer] : cases) {
        EXPECT_EQ(AskAndDo(buttons, PressEscape), answer);
        EXPECT_EQ(AskAndDo(buttons, [](xMessageBox& box) { box.close(); }), answer);
    }
}

TEST(xMessageBoxTest, NoHasTheFocusAndTheTextIsTakenLiterally) {
    AskAndDo(three, [](xMessageBox& box) {
        EXPECT_EQ(box.objectName(), QStringLiteral("xMessageBox"));
        EXPECT_EQ(box.windowTitle(), QStringLiteral(" Achtung!"));
        const auto* focused = qobject_cast<QPushButton*>(box.focusWidget());
        ASSERT_TRUE(focused);
        EXPECT_EQ(focused->text().remove(u'&'), QStringLiteral("Nein"));
        EXPECT_TRUE(focused->isDefault());
        EXPECT_EQ(box.findChild<QLabel*>(QStringLiteral("lblText"))->textFormat(), Qt::PlainText);
        box.close();
    });
}

TEST(xMessageBoxTest, TimersGoOnWhileItWaits) {
    int ticks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        if (++ticks == 3)
            QApplication::activeModalWidget()->close();
    });
    timer.start(1);
    EXPECT_EQ(xMessageBox::Ask(nullptr, {}, {}, three), QStringLiteral("Nein"));
    EXPECT_GE(ticks, 3);
}

TEST(xMessageBoxTest, AParentThatGoesAwayAnswersNo) {
    QPointer<QWidget> parent = new QWidget;
    QTimer::singleShot(0, qApp, [parent] { delete parent; });
    EXPECT_EQ(xMessageBox::Ask(parent, {}, {}, three), QStringLiteral("Nein"));
    EXPECT_TRUE(parent.isNull());
}

} // namespace
} // namespace kalvo
