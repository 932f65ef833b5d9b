#include "widgets/KeySplitter.h"

#include "support/WindowActs.h"
#include "widgets/SkinStyle.h"
#include "widgets/Spoken.h"

#include <QtWidgets>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

TEST(KeySplitterTest, TheHandleIsMovedByKeysAndByAScreenReader) {
    Spoken::Install();
    KeySplitter splitter{Qt::Vertical};
    auto* first = new QWidget;
    auto* second = new QWidget;
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
    int told = 0;
    QObject::connect(&splitter, &QSplitter::splitterMoved, &splitter, [&told] { ++told; });
    first->setFocus();
    QWidget& handle = *splitter.handle(1);
    handle.setFocus(Qt::TabFocusReason);
    const auto moved = [&handle](int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        const int before = handle.y();
        test::PressKey(handle, key, modifiers);
        return handle.y() - before;
    };
    const int unit = SkinStyle::Units().F();
    EXPECT_EQ(moved(Qt::Key_Down), unit);
    EXPECT_EQ(moved(Qt::Key_Up), -unit);
    EXPECT_EQ(moved(Qt::Key_PageDown), 5 * unit);
    EXPECT_EQ(moved(Qt::Key_PageUp, Qt::KeypadModifier), -5 * unit);
    EXPECT_EQ(told, 4);
    EXPECT_EQ(moved(Qt::Key_Down, Qt::ControlModifier), 0) << "another's";
    moved(Qt::Key_Home);
    EXPECT_EQ(handle.y(), 50) << "the upper part keeps its least height";
    EXPECT_EQ(moved(Qt::Key_Up), 0);
    EXPECT_EQ(moved(Qt::Key_Return), 0);
    EXPECT_EQ(splitter.focusWidget(), first);

    handle.setFocus();
    moved(Qt::Key_End);
    EXPECT_EQ(second->height(), 50);
    moved(Qt::Key_Escape);
    EXPECT_EQ(splitter.focusWidget(), first);
    EXPECT_EQ(handle.y(), 50) << "where Enter had left it";

    QAccessibleInterface& spoken = *QAccessible::queryAccessibleInterface(&handle);
    EXPECT_EQ(spoken.role(), QAccessible::Splitter);
    EXPECT_EQ(spoken.text(QAccessible::Name), u"Teiler der Teile"_s);
    spoken.valueInterface()->setCurrentValue(25);
    EXPECT_NEAR(handle.y(), 150, 3);
    EXPECT_EQ(spoken.text(QAccessible::Value), u"25 %"_s);
}

} // namespace
} // namespace kalvo
