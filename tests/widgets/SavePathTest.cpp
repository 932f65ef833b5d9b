#include "widgets/SavePath.h"

#include "support/TestFolder.h"
#include "widgets/xMessageBox.h"

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

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
    QTimer answering;
    QObject::connect(&answering, &QTimer::timeout, [answer] {
        if (auto* box = qobject_cast<xMessageBox*>(QApplication::activeModalWidget()))
            for (QPushButton* button : box->findChildren<QPushButton*>())
                if (button->text().remove(u'&') == answer)
                    button->click();
    });
    answering.start(5);
    return QFileInfo(AskSavePath(dialog, {u".wil"_s}, asks)).fileName();
}

} // namespace

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

} // namespace kalvo
