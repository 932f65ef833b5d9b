#include "app/ComponentSignature.h"
#include "support/TestFolder.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

struct ToolRun {
    int code = -1;
    QByteArray out;
};

ToolRun Tool(const QStringList& arguments) {
    QProcess tool;
    tool.start(qEnvironmentVariable("KALVO_BIN") + QStringLiteral("/kalvo-signieren"), arguments);
    EXPECT_TRUE(tool.waitForFinished(60000));
    return {tool.exitCode(), tool.readAllStandardOutput()};
}

class SigningToolTest : public ::testing::Test {
protected:
    QString Path(const char* name) const { return folder_.Path(QString::fromUtf8(name)); }

    test::TestFolder folder_;
};

TEST_F(SigningToolTest, SignsWhatTheProgramAccepts) {
    const ToolRun keys = Tool({QStringLiteral("schluessel"), Path("geheim")});
    ASSERT_EQ(keys.code, 0);
    EXPECT_TRUE(ComponentSignature::IsPublicKey(keys.out));
    EXPECT_EQ(QFileInfo(Path("geheim")).permissions() & (QFile::ReadGroup | QFile::ReadOther), 0);
    folder_.Write(QStringLiteral("ordner/CdBase.ocx"), "Inhalt");
    const QString file = Path("ordner/CdBase.ocx");
    ASSERT_EQ(Tool({QStringLiteral("signieren"), Path("geheim"), file}).code, 0);
    const QByteArray signature = folder_.Read(QStringLiteral("ordner/CdBase.ocx.sig"));
    EXPECT_TRUE(ComponentSignature::Verify(QStringLiteral("CdBase.ocx"), "Inhalt", signature, keys.out));
    EXPECT_FALSE(ComponentSignature::Verify(QStringLiteral("CdBase.ocx"), "inhalt", signature, keys.out));
    EXPECT_FALSE(ComponentSignature::Verify(QStringLiteral("wenzo.dll"), "Inhalt", signature, keys.out));

    const QString key = QString::fromLatin1(keys.out.trimmed());
    EXPECT_EQ(Tool({QStringLiteral("pruefen"), key, file}).code, 0);
    folder_.Write(QStringLiteral("ordner/CdBase.ocx"), "geändert");
    EXPECT_EQ(Tool({QStringLiteral("pruefen"), key, file}).code, 1);
}

TEST_F(SigningToolTest, ASecretKeyIsNeverOverwrittenAndFaultsAreTold) {
    folder_.Write(QStringLiteral("geheim"), "wertvoll");
    EXPECT_EQ(Tool({QStringLiteral("schluessel"), Path("geheim")}).code, 1);
    EXPECT_EQ(folder_.Read(QStringLiteral("geheim")), "wertvoll");
    folder_.Write(QStringLiteral("a.dll"), "Inhalt");
    EXPECT_EQ(Tool({QStringLiteral("signieren"), Path("geheim"), Path("a.dll")}).code, 1) << "that is no key";
    EXPECT_EQ(Tool({QStringLiteral("signieren"), Path("fehlt"), Path("a.dll")}).code, 1);
    EXPECT_FALSE(QFile::exists(Path("a.dll.sig")));
    EXPECT_EQ(Tool({QStringLiteral("pruefen"), QStringLiteral("ff"), Path("a.dll")}).code, 1);
    EXPECT_EQ(Tool({}).code, 2);
}

} // namespace
} // namespace kalvo
