#include "widgets/KeySplitter.h"

#include "widgets/SkinStyle.h"
#include "widgets/Spoken.h"

#include <QApplication>
#include <QImage>
#include <QKeyEvent>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

struct KeySplitterTest : ::testing::Test {
    KeySplitterTest() {
        Spoken::Install();
        for (QWidget* part : {first, second}) {
            part->setFocusPolicy(Qt::StrongFocus);
            part->setMinimumHeight(50);
            splitter.addWidget(part);
        }
        splitter.NameHandle(1, u"Teiler"_s, u"Teiler der Teile"_s);
        splitter.setChildrenCollapsible(false);
        splitter.resize(200, 600);
        splitter.setSizes({300, 300});
        splitter.show();
        QApplication::processEvents();
        QObject::connect(&splitter, &QSplitter::splitterMoved, &splitter, [this] { ++told; });
        first->setFocus();
        handle = splitter.handle(1);
        handle->setFocus(Qt::TabFocusReason);
        start = handle->y();
    }

    /** How far the key moves the handle down. */
    int Moved(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        const int before = handle->y();
        QKeyEvent press(QEvent::KeyPress, key, modifiers);
        QApplication::sendEvent(handle, &press);
        return handle->y() - before;
    }

    KeySplitter splitter{Qt::Vertical};
    QWidget* first = new QWidget;
    QWidget* second = new QWidget;
    QSplitterHandle* handle = nullptr;
    int start = 0;
    int told = 0;
};

TEST_F(KeySplitterTest, KeysMoveTheHandleAndTellEachStep) {
    const int unit = SkinStyle::Units().F();
    EXPECT_EQ(Moved(Qt::Key_Down), unit);
    EXPECT_EQ(Moved(Qt::Key_Up), -unit);
    EXPECT_EQ(Moved(Qt::Key_PageDown), 5 * unit);
    EXPECT_EQ(Moved(Qt::Key_PageUp, Qt::KeypadModifier), -5 * unit);
    EXPECT_EQ(told, 4);
    EXPECT_EQ(Moved(Qt::Key_Down, Qt::ControlModifier), 0) << "another's";
    Moved(Qt::Key_Home);
    EXPECT_EQ(handle->y(), 50) << "the upper part keeps its least height";
    EXPECT_EQ(Moved(Qt::Key_Up), 0);
    Moved(Qt::Key_End);
    EXPECT_EQ(second->height(), 50);
}

TEST_F(KeySplitterTest, EnterKeepsThePlaceAndEscapeDoesNot) {
    const int moved = Moved(Qt::Key_PageUp);
    Moved(Qt::Key_Return);
    EXPECT_EQ(splitter.focusWidget(), first);
    EXPECT_EQ(handle->y(), start + moved);
    handle->setFocus();
    Moved(Qt::Key_End);
    Moved(Qt::Key_Escape);
    EXPECT_EQ(splitter.focusWidget(), first);
    EXPECT_EQ(handle->y(), start + moved);
}

TEST_F(KeySplitterTest, TheFocusIsSeenAndSpoken) {
    const auto picture = [this] {
        QImage image(handle->size(), QImage::Format_RGB32);
        handle->render(&image);
        return image;
    };
    const QImage focused = picture();
    first->setFocus();
    EXPECT_NE(picture(), focused);
    QAccessibleInterface& spoken = *QAccessible::queryAccessibleInterface(handle);
    EXPECT_EQ(spoken.role(), QAccessible::Splitter);
    EXPECT_EQ(spoken.text(QAccessible::Name), u"Teiler der Teile"_s);
    EXPECT_NEAR(spoken.valueInterface()->currentValue().toInt(), 50, 2);
    EXPECT_EQ(spoken.text(QAccessible::Value), spoken.valueInterface()->currentValue().toString() + u" %"_s);
    spoken.valueInterface()->setCurrentValue(25);
    EXPECT_NEAR(handle->y(), 150, 3);
    EXPECT_EQ(spoken.valueInterface()->currentValue().toInt(), 25);
}

} // namespace
} // namespace kalvo
