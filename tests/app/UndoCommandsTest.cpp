#include "app/UndoCommands.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QUndoStack>
#include <gtest/gtest.h>

#include <utility>

namespace kalvo {

namespace {

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
        menu.addAction(QStringLiteral("Schnellsuche"));
        commands = std::make_unique<UndoCommands>(menu);
        commands->Add(lists);
        commands->Add(archive);
        lists.setUndoLimit(3);
    }
    QAction* Undo() { return commands->findChild<QAction*>(QStringLiteral("Rueckgaengig")); }
    QAction* Redo() { return commands->findChild<QAction*>(QStringLiteral("Wiederherstellen")); }

    QMenu menu;
    QUndoStack lists, archive;
    QLineEdit field;
    std::unique_ptr<UndoCommands> commands;
    QString done;
};

} // namespace

TEST_F(UndoCommandsTest, TakesBackWhatWasDoneLastWhicheverTopicItBelongsTo) {
    EXPECT_FALSE(Undo()->isEnabled());
    lists.push(new Named(done, u'a'));
    archive.push(new Named(done, u'b'));
    lists.push(new Named(done, u'c'));
    EXPECT_EQ(Undo()->text(), QStringLiteral("&Rückgängig: c"));
    Undo()->trigger();
    EXPECT_EQ(Undo()->text(), QStringLiteral("&Rückgängig: b"));
    Undo()->trigger();
    EXPECT_EQ(done, QStringLiteral("a"));
    Redo()->trigger();
    EXPECT_EQ(Redo()->text(), QStringLiteral("&Wiederherstellen: c"));
    Redo()->trigger();
    EXPECT_EQ(done, QStringLiteral("abc"));
    EXPECT_FALSE(Redo()->isEnabled());
    EXPECT_EQ(menu.actions().first(), Undo());
}

TEST_F(UndoCommandsTest, ANewChangeEndsWhatCouldBeDoneAgain) {
    lists.push(new Named(done, u'a'));
    lists.push(new Named(done, u'b'));
    Undo()->trigger();
    archive.push(new Named(done, u'c'));
    EXPECT_FALSE(Redo()->isEnabled()) << "in the other topic too";
    Undo()->trigger();
    Undo()->trigger();
    EXPECT_EQ(done, QString());
    for (const QString& expected : {QStringLiteral("a"), QStringLiteral("ac")}) {
        Redo()->trigger();
        EXPECT_EQ(done, expected);
    }
    EXPECT_FALSE(Redo()->isEnabled());
}

TEST_F(UndoCommandsTest, PassesOverWhatAStackHasForgotten) {
    for (const QChar name : QStringLiteral("abcd"))
        lists.push(new Named(done, name)); // keeps three
    archive.push(new Named(done, u'x'));
    for (int step = 0; step < 4; ++step)
        Undo()->trigger();
    EXPECT_EQ(done, QStringLiteral("a"));
    EXPECT_FALSE(Undo()->isEnabled());
    Redo()->trigger();
    EXPECT_EQ(done, QStringLiteral("ab"));
}

TEST_F(UndoCommandsTest, AStackThatGoesTakesItsCommandsAlong) {
    {
        QUndoStack passing;
        commands->Add(passing);
        for (const QChar name : QStringLiteral("xyz")) {
            lists.push(new Named(done, name.toUpper()));
            passing.push(new Named(done, name));
        }
    }
    Undo()->trigger();
    Undo()->trigger();
    EXPECT_EQ(done, QStringLiteral("Xxyz"));
    EXPECT_EQ(Undo()->text(), QStringLiteral("&Rückgängig: X"));
}

TEST_F(UndoCommandsTest, ACommandThatCannotBeDoneAgainIsGone) {
    lists.push(new Named(done, u'a'));
    archive.push(new Named(done, u'!'));
    lists.push(new Named(done, u'c'));
    Undo()->trigger();
    Undo()->trigger();
    Redo()->trigger();
    EXPECT_EQ(Undo()->text(), QStringLiteral("&Rückgängig: a"));
    Redo()->trigger();
    EXPECT_EQ(done, QStringLiteral("ac"));
}

TEST_F(UndoCommandsTest, ATextFieldKeepsTheKeyOnlyWhileItHasSomethingToTakeBack) {
    const auto isTaken = [this] {
        QKeyEvent override(QEvent::ShortcutOverride, Qt::Key_Z, Qt::ControlModifier);
        override.ignore();
        QApplication::sendEvent(&field, &override);
        return override.isAccepted();
    };
    EXPECT_FALSE(isTaken());
    field.insert(QStringLiteral("x"));
    EXPECT_TRUE(isTaken());
}

} // namespace kalvo
