#include "widgets/KeySplitter.h"

#include "support/WindowActs.h"
#include "widgets/SkinStyle.h"

#include <QtWidgets>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

struct KeySplitterTest : ::testing::Test {
    KeySplitterTest() {
        for (QWidget* part : {first, second}) {
            part->setFocusPolicy(Qt::StrongFocus);
            part->setMinimumHeight(50);
            splitter.addWidget(part);
        }
        splitter.setChildrenCollapsible(false);
        splitter.resize(200, 600);
        splitter.setSizes({300, 300});
        splitter.show();
        QApplication::processEvents();
        QObject::connect(&splitter, &QSplitter::splitterMoved, &splitter, [this] { ++told; });
        first->setFocus();
        handle = splitter.handle(1);
        handle->setFocus(Qt::TabFocusReason);
    }

    /** How far the key moves the handle down. */
    int Moved(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        const int before = handle->y();
        test::PressKey(*handle, key, modifiers);
        return handle->y() - before;
    }

    KeySplitter splitter{Qt::Vertical};
    QWidget* first = new QWidget;
    QWidget* second = new QWidget;
    QSplitterHandle* handle = nullptr;
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
    Moved(Qt::Key_PageUp);
    const int place = handle->y();
    EXPECT_EQ(Moved(Qt::Key_Return), 0);
    EXPECT_EQ(splitter.focusWidget(), first);
    handle->setFocus();
    Moved(Qt::Key_End);
    Moved(Qt::Key_Escape);
    EXPECT_EQ(splitter.focusWidget(), first);
    EXPECT_EQ(handle->y(), place);
}

} // namespace
} // namespace kalvo
