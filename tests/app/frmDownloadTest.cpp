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

#include <memory>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

using test::Answer;
using test::WaitUntil;

const QString kPath = u"/CdBase.ocx"_s;

class frmDownloadTest : public ::testing::Test {
protected:
    frmDownloadTest() {
        source_.address = server_.Address(QString());
        source_.publicKey = keys_.publicKey;
        source_.programFolder = folder_.Path();
        const QByteArray signature = ComponentSignature::Sign(u"CdBase.ocx"_s, content_, keys_.secretKey);
        server_.answers[kPath + u".sig"_s] = Answer::File(signature);
    }

    void Open() {
        dialog_ = std::make_unique<frmDownload>(source_, u"CDDB"_s);
        dialog_->show();
    }
    template<typename Widget>
    Widget& Find(const char* name) const {
        auto* found = dialog_->findChild<Widget*>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }
    QPushButton& Again() const { return Find<QPushButton>("Command1"); }
    QPushButton& Close() const { return Find<QPushButton>("Command2"); }
    QString Text() const { return Find<QLabel>("Label1").text(); }
    void PressEscape() const {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QApplication::sendEvent(dialog_.get(), &press);
    }

    const ComponentSignature::KeyPair keys_ = ComponentSignature::NewKeys();
    const QByteArray content_ = QByteArray("Inhalt").repeated(100);
    test::TestFolder folder_;
    test::MisbehavingServer server_;
    ComponentSource source_;
    std::unique_ptr<frmDownload> dialog_;
};

TEST_F(frmDownloadTest, ShowsHowFarItIsIsCancelledByEscAndTriedAgain) {
    const QByteArray whole = Answer::File(content_).bytes;
    server_.answers[kPath] = {whole.chopped(content_.size() / 2), Answer::Then::Hang};
    Open();
    EXPECT_TRUE(WaitUntil([this] { return Find<QLabel>("Label2").text() == u"50%"_s; }));
    EXPECT_EQ(Find<QProgressBar>("ProgressBar1").value(), 50);
    EXPECT_EQ(Text(), u"CdBase.ocx wird heruntergeladen..."_s);
    EXPECT_EQ(Close().text(), u"Abbrechen"_s);
    EXPECT_FALSE(Again().isVisible());
    PressEscape();
    EXPECT_TRUE(dialog_->isVisible()) << "it says first what became of it";
    EXPECT_EQ(Text(), u"Der Download wurde abgebrochen.\nEs wurde nichts installiert."_s);
    EXPECT_FALSE(dialog_->Installed());
    server_.answers[kPath] = Answer::File(content_);
    Again().click();
    EXPECT_FALSE(Again().isVisible());
    ASSERT_TRUE(WaitUntil([this] { return dialog_->Installed(); }));
    EXPECT_EQ(Text(), u"Der Download ist fertig."_s);
    EXPECT_EQ(Find<QLabel>("Label2").text(), u"100%"_s);
    EXPECT_EQ(folder_.Read(u"CdBase.ocx"_s), content_);
    PressEscape();
    EXPECT_FALSE(dialog_->isVisible());
}

} // namespace
} // namespace kalvo
