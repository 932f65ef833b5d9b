#include "app/UndoCommands.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QUndoStack>
#include <gtest/gtest.h>

namespace kalvo {

namespace {

/** Takes its name out of a text and puts it back. */
class Named final : public QUndoCommand {
public:
    Named(QString& done, QChar name) : QUndoCommand(QString(name)), done_(done), name_(name) {}
    void redo() override { done_ += name_; }
    void undo() override { done_.remove(name_); }

private:
    QString& done_;
    QChar name_;
};

struct UndoCommandsTest : ::testing::Test {
    UndoCommandsTest() {
        menu.addAction(QStringLiteral("Schnellsuche"));
        commands = std::make_unique<UndoCommands>(menu);
        commands->Add(lists, {&left});
        commands->Add(archive, {&right});
    }
    QAction* Undo() { return commands->findChild<QAction*>(QStringLiteral("Rueckgaengig")); }
    QAction* Redo() { return commands->findChild<QAction*>(QStringLiteral("Wiederherstellen")); }

    QMenu menu;
    QUndoStack lists, archive;
    QWidget window;
    QWidget left{&window}, right{&window};
    QLineEdit inRight{&right};
    std::unique_ptr<UndoCommands> commands;
    QString done;
};

} // namespace

TEST_F(UndoCommandsTest, ActsOnWhatWasChangedLast) {
    EXPECT_FALSE(Undo()->isEnabled());
    lists.push(new Named(done, u'a'));
    archive.push(new Named(done, u'b'));
    EXPECT_EQ(Undo()->text(), QStringLiteral("&Rückgängig: b"));
    Undo()->trigger();
    EXPECT_EQ(done, QStringLiteral("a"));
    EXPECT_FALSE(Undo()->isEnabled()) << "the other topic is not touched";
    Redo()->trigger();
    EXPECT_EQ(done, QStringLiteral("ab"));
    EXPECT_EQ(menu.actions().first(), Undo());
}

TEST_F(UndoCommandsTest, FollowsTheFocus) {
    lists.push(new Named(done, u'a'));
    archive.push(new Named(done, u'b'));
    Q_EMIT qApp->focusChanged(nullptr, &left);
    Undo()->trigger();
    EXPECT_EQ(done, QStringLiteral("b"));
    Q_EMIT qApp->focusChanged(&left, &inRight);
    Q_EMIT qApp->focusChanged(&inRight, nullptr);
    Undo()->trigger();
    EXPECT_EQ(done, QString());
}

TEST_F(UndoCommandsTest, ATextFieldKeepsTheKeyOnlyWhileItHasSomethingToTakeBack) {
    const auto isTaken = [this] {
        QKeyEvent override(QEvent::ShortcutOverride, Qt::Key_Z, Qt::ControlModifier);
        override.ignore();
        QApplication::sendEvent(&inRight, &override);
        return override.isAccepted();
    };
    EXPECT_FALSE(isTaken());
    inRight.insert(QStringLiteral("x"));
    EXPECT_TRUE(isTaken());
}

} // namespace kalvo
