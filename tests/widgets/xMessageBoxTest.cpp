#include "widgets/xMessageBox.h"

#include "support/TestFolder.h"
#include "support/WindowActs.h"
#include "widgets/SavePath.h"

#include <QtWidgets>
#include <gmock/gmock.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

const QStringList three{u"Ja"_s, u"Nein"_s, u"Abbrechen"_s};

/** Acts on the open question as soon as the event loop runs, and tells the answer. */
QString AskAndDo(const QStringList& buttons, const std::function<void(xMessageBox&)>& act) {
    QTimer::singleShot(0, qApp, [&act] {
        auto* box = qobject_cast<xMessageBox*>(QApplication::activeModalWidget());
        ASSERT_TRUE(box);
        act(*box);
    });
    return xMessageBox::Ask(nullptr, u" Achtung!"_s, u"Titel: <b>A & B</b>"_s, buttons);
}

TEST(xMessageBoxTest, TheAnswerIsThePressedCaption) {
    for (int i = 0; i < 3; ++i) {
        const QString name = u"Command%1"_s.arg(i + 1);
        EXPECT_EQ(AskAndDo(three, [&](xMessageBox& box) { box.findChild<QPushButton*>(name)->click(); }), three[i]);
    }
}

TEST(xMessageBoxTest, EscAndTheCloseBoxNeverSayYes) {
    const std::pair<QStringList, QString> cases[] = {{three, u"Nein"_s},
                                                     {{u"Ja"_s, u"Nein"_s}, u"Nein"_s},
                                                     {{u"Weiter"_s, u"Abbrechen"_s}, u"Abbrechen"_s},
                                                     {{}, u"OK"_s}};
    for (const auto& [buttons, answer] : cases) {
        EXPECT_EQ(AskAndDo(buttons, [](xMessageBox& box) { test::PressKey(box, Qt::Key_Escape); }), answer);
        EXPECT_EQ(AskAndDo(buttons, [](xMessageBox& box) { box.close(); }), answer);
    }
}

TEST(xMessageBoxTest, NoHasTheFocusAndTheTextIsTakenLiterally) {
    AskAndDo(three, [](xMessageBox& box) {
        const auto* focused = qobject_cast<QPushButton*>(box.focusWidget());
        ASSERT_TRUE(focused);
        EXPECT_EQ(focused->text().remove(u'&'), u"Nein"_s);
        EXPECT_TRUE(focused->isDefault());
        EXPECT_EQ(box.findChild<QLabel*>(u"lblText"_s)->textFormat(), Qt::PlainText);
        box.close();
    });
}

TEST(xMessageBoxTest, AParentThatGoesAwayAnswersNo) {
    QPointer<QWidget> parent = new QWidget;
    QTimer::singleShot(0, qApp, [parent] { delete parent; });
    EXPECT_EQ(xMessageBox::Ask(parent, {}, {}, three), u"Nein"_s);
    EXPECT_TRUE(parent.isNull());
}

/** Types a name into a save dialog, accepts it, and answers the program's own question. */
QString SavedAs(const test::TestFolder& folder, const QString& name, const QString& answer = {}, bool asks = true) {
    QFileDialog dialog(nullptr, u"Speichern"_s, folder.Path());
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(u"wil"_s);
    QTimer::singleShot(0, &dialog, [&dialog, name] {
        dialog.findChild<QLineEdit*>(u"fileNameEdit"_s)->setText(name);
        QMetaObject::invokeMethod(&dialog, "accept");
    });
    const test::Answers answers({answer});
    return QFileInfo(AskSavePath(dialog, {u".wil"_s}, asks)).fileName();
}

TEST(SavePathTest, ANameWithADotGetsItsSuffixAndReplacesNothingUnasked) {
    const test::TestFolder folder;
    EXPECT_EQ(SavedAs(folder, u"Party"_s), u"Party.wil"_s);
    EXPECT_EQ(SavedAs(folder, u"Party.WIL"_s), u"Party.WIL"_s);
    EXPECT_EQ(SavedAs(folder, u"Silvester 31.12"_s), u"Silvester 31.12.wil"_s);
    folder.Write(u"Silvester 31.12.wil"_s, "x");
    EXPECT_EQ(SavedAs(folder, u"Silvester 31.12"_s, u"Nein"_s), QString());
    EXPECT_EQ(SavedAs(folder, u"Silvester 31.12"_s, u"Ja"_s), u"Silvester 31.12.wil"_s);
    EXPECT_EQ(SavedAs(folder, u"Silvester 31.12"_s, {}, false), u"Silvester 31.12.wil"_s) << "the caller asks";
}

} // namespace
} // namespace kalvo
