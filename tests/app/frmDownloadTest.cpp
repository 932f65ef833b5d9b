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
#include <QTimer>
#include <gtest/gtest.h>

#include <memory>

namespace kalvo {
namespace {

using test::Answer;
using test::WaitUntil;

const QString kPath = QStringLiteral("/CdBase.ocx");

class frmDownloadTest : public ::testing::Test {
protected:
    frmDownloadTest() {
        source_.address = server_.Address(QString());
        source_.publicKey = keys_.publicKey;
        source_.programFolder = folder_.Path();
        const QByteArray signature = ComponentSignature::Sign(QStringLiteral("CdBase.ocx"), content_, keys_.secretKey);
        server_.answers[kPath + QStringLiteral(".sig")] = Answer::File(signature);
    }

    void Open() {
        dialog_ = std::make_unique<frmDownload>(source_, QStringLiteral("CDDB"));
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
    bool Ended() const { return Close().text() == QStringLiteral("Schließen"); }
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

TEST_F(frmDownloadTest, ShowsHowFarItIsAndIsCancelledByEsc) {
    const QByteArray whole = Answer::File(content_).bytes;
    server_.answers[kPath] = {whole.chopped(content_.size() / 2), Answer::Then::Hang};
    Open();
    EXPECT_TRUE(WaitUntil([this] { return Find<QLabel>("Label2").text() == QStringLiteral("50%"); }));
    EXPECT_EQ(Find<QProgressBar>("ProgressBar1").value(), 50);
    EXPECT_EQ(Text(), QStringLiteral("CdBase.ocx wird heruntergeladen..."));
    EXPECT_EQ(Close().text(), QStringLiteral("Abbrechen"));
    EXPECT_FALSE(Again().isVisible());
    PressEscape();
    EXPECT_TRUE(dialog_->isVisible()) << "it says first what became of it";
    EXPECT_EQ(Text(), QStringLiteral("Der Download wurde abgebrochen.\nEs wurde nichts installiert."));
    EXPECT_FALSE(dialog_->Installed());
    PressEscape();
    EXPECT_FALSE(dialog_->isVisible());
    EXPECT_TRUE(folder_.Read(QStringLiteral("CdBase.ocx")).isEmpty());
}

TEST_F(frmDownloadTest, AFailureCanBeTriedAgain) {
    Open();
    ASSERT_TRUE(WaitUntil([this] { return Ended(); }));
    EXPECT_TRUE(Text().endsWith(QStringLiteral("\nEs wurde nichts installiert."))) << Text().toStdString();
    ASSERT_TRUE(Again().isVisible());
    server_.answers[kPath] = Answer::File(content_);
    Again().click();
    EXPECT_FALSE(Ended());
    ASSERT_TRUE(WaitUntil([this] { return Ended(); }));
    EXPECT_TRUE(dialog_->Installed());
    EXPECT_EQ(Text(), QStringLiteral("Der Download ist fertig."));
    EXPECT_EQ(Find<QLabel>("Label2").text(), QStringLiteral("100%"));
    EXPECT_FALSE(Again().isVisible());
    EXPECT_EQ(folder_.Read(QStringLiteral("CdBase.ocx")), content_);
}

TEST_F(frmDownloadTest, AProgramBuiltWithoutAnAddressSaysSo) {
    if (!ComponentSource::OfBuild().address.isEmpty())
        GTEST_SKIP() << "this one has an address";
    QString text;
    QTimer::singleShot(0, qApp, [&text] {
        auto* dialog = QApplication::activeModalWidget();
        ASSERT_NE(dialog, nullptr);
        text = dialog->findChild<QLabel*>(QStringLiteral("Label1"))->text();
        dialog->close();
    });
    EXPECT_FALSE(frmDownload::Run(QStringLiteral("wenzo")));
    EXPECT_TRUE(text.startsWith(QStringLiteral("Dieses Kalvo kann keine Komponenten herunterladen")))
        << text.toStdString();
}

} // namespace
} // namespace kalvo
