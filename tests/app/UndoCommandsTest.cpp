#include "app/UndoCommands.h"

#include <QtWidgets>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

/** Takes its name out of a text and puts it back; "!" fails the second time. */
class Named final : public QUndoCommand {
public:
    Named(QString& done, QChar name) : QUndoCommand(QString(name)), done_(done), name_(name) {}
    void redo() override {
        setObsolete(name_ == u'!' && std::exchange(again_, true));
        if (!isObsolete())
            done_ += name_;
    }
    void undo() override { done_.remove(name_); }

private:
    QString& done_;
    QChar name_;
    bool again_ = false;
};

struct UndoCommandsTest : ::testing::Test {
    UndoCommandsTest() {
        menu.addAction(u"Schnellsuche"_s);
        commands = std::make_unique<UndoCommands>(menu);
        commands->Add(lists);
        commands->Add(archive);
        lists.setUndoLimit(3);
    }
    QAction* Undo() { return commands->findChild<QAction*>(u"Rueckgaengig"_s); }
    QAction* Redo() { return commands->findChild<QAction*>(u"Wiederherstellen"_s); }
    /** Pushes a command for each letter. */
    void Push(QUndoStack& stack, const QString& names) {
        for (const QChar name : names)
            stack.push(new Named(done, name));
    }
    void Step(QAction* action, int times) {
        for (int step = 0; step < times; ++step)
            action->trigger();
    }

    QMenu menu;
    QUndoStack lists, archive;
    QLineEdit field;
    std::unique_ptr<UndoCommands> commands;
    QString done;
};

TEST_F(UndoCommandsTest, TakesBackWhatWasDoneLastWhicheverTopicItBelongsTo) {
    EXPECT_FALSE(Undo()->isEnabled());
    Push(lists, u"a"_s);
    Push(archive, u"b"_s);
    Push(lists, u"c"_s);
    EXPECT_EQ(Undo()->text(), u"&Rückgängig: c"_s);
    Undo()->trigger();
    EXPECT_EQ(Undo()->text(), u"&Rückgängig: b"_s);
    Undo()->trigger();
    EXPECT_EQ(done, u"a"_s);
    Redo()->trigger();
    EXPECT_EQ(Redo()->text(), u"&Wiederherstellen: c"_s);
    Redo()->trigger();
    EXPECT_EQ(done, u"abc"_s);
    EXPECT_FALSE(Redo()->isEnabled());
    EXPECT_EQ(menu.actions().first(), Undo());
}

TEST_F(UndoCommandsTest, ANewChangeEndsWhatCouldBeDoneAgain) {
    Push(lists, u"ab"_s);
    Undo()->trigger();
    Push(archive, u"c"_s);
    EXPECT_FALSE(Redo()->isEnabled()) << "in the other topic too";
    Step(Undo(), 2);
    EXPECT_EQ(done, QString());
    for (const QString& expected : {u"a"_s, u"ac"_s}) {
        Redo()->trigger();
        EXPECT_EQ(done, expected);
    }
    EXPECT_FALSE(Redo()->isEnabled());
}

TEST_F(UndoCommandsTest, PassesOverWhatAStackHasForgotten) {
    Push(lists, u"abcd"_s); // keeps three
    Push(archive, u"x"_s);
    Step(Undo(), 4);
    EXPECT_EQ(done, u"a"_s);
    EXPECT_FALSE(Undo()->isEnabled());
    Redo()->trigger();
    EXPECT_EQ(done, u"ab"_s);
}

TEST_F(UndoCommandsTest, AStackThatGoesTakesItsCommandsAlong) {
    {
        QUndoStack passing;
        commands->Add(passing);
        for (const char16_t name : {u'x', u'y', u'z'}) {
            Push(lists, QChar(name).toUpper());
            Push(passing, QChar(name));
        }
    }
    Step(Undo(), 2);
    EXPECT_EQ(done, u"Xxyz"_s);
    EXPECT_EQ(Undo()->text(), u"&Rückgängig: X"_s);
}

TEST_F(UndoCommandsTest, ACommandThatCannotBeDoneAgainIsGone) {
    Push(lists, u"a"_s);
    Push(archive, u"!"_s);
    Push(lists, u"c"_s);
    Step(Undo(), 2);
    Redo()->trigger();
    EXPECT_EQ(Undo()->text(), u"&Rückgängig: a"_s);
    Redo()->trigger();
    EXPECT_EQ(done, u"ac"_s);
}

TEST_F(UndoCommandsTest, ATextFieldKeepsTheKeyOnlyWhileItHasSomethingToTakeBack) {
    const auto isTaken = [this] {
        QKeyEvent override(QEvent::ShortcutOverride, Qt::Key_Z, Qt::ControlModifier);
        override.ignore();
        QApplication::sendEvent(&field, &override);
        return override.isAccepted();
    };
    EXPECT_FALSE(isTaken());
    field.insert(u"x"_s);
    EXPECT_TRUE(isTaken());
}

} // namespace
} // namespace kalvo
