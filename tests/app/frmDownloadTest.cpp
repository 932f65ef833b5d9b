#include "app/frmDownload.h"

#include "MisbehavingServer.h"
#include "app/ComponentSignature.h"
#include "support/TestFolder.h"
#include "support/WaitUntil.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

using test::Answer;
using test::WaitUntil;

TEST(frmDownload, ShowsHowFarItIsIsCancelledByEscAndTriedAgain) {
    const ComponentSignature::KeyPair keys = ComponentSignature::NewKeys();
    const QByteArray content = QByteArray("Inhalt").repeated(100);
    const QByteArray half = Answer::File(content).bytes.chopped(content.size() / 2);
    const test::TestFolder folder;
    test::MisbehavingServer server;
    server.answers[u"/CdBase.ocx.sig"_s] =
        Answer::File(ComponentSignature::Sign(u"CdBase.ocx"_s, content, keys.secretKey));
    server.answers[u"/CdBase.ocx"_s] = {half, Answer::Then::Hang};
    ComponentSource source;
    source.address = server.Address(QString());
    source.publicKey = keys.publicKey;
    source.programFolder = folder.Path();
    frmDownload dialog(source, u"CDDB"_s);
    dialog.show();
    const auto text = [&dialog](const char* label) { return dialog.findChild<QLabel*>(QLatin1String(label))->text(); };
    const auto pressEscape = [&dialog] {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QApplication::sendEvent(&dialog, &press);
    };
    auto* const again = dialog.findChild<QPushButton*>(u"Command1"_s);
    EXPECT_TRUE(WaitUntil([&text] { return text("Label2") == u"50%"_s; }));
    EXPECT_EQ(dialog.findChild<QProgressBar*>(u"ProgressBar1"_s)->value(), 50);
    EXPECT_EQ(text("Label1"), u"CdBase.ocx wird heruntergeladen..."_s);
    EXPECT_FALSE(again->isVisible());
    pressEscape();
    EXPECT_TRUE(dialog.isVisible()) << "it says first what became of it";
    EXPECT_EQ(text("Label1"), u"Der Download wurde abgebrochen.\nEs wurde nichts installiert."_s);
    EXPECT_FALSE(dialog.Installed());
    server.answers[u"/CdBase.ocx"_s] = Answer::File(content);
    again->click();
    EXPECT_FALSE(again->isVisible());
    ASSERT_TRUE(WaitUntil([&dialog] { return dialog.Installed(); }));
    EXPECT_EQ(text("Label1"), u"Der Download ist fertig."_s);
    EXPECT_EQ(text("Label2"), u"100%"_s);
    EXPECT_EQ(folder.Read(u"CdBase.ocx"_s), content);
    pressEscape();
    EXPECT_FALSE(dialog.isVisible());
}

} // namespace
} // namespace kalvo
