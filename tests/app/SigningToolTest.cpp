#include "app/ComponentSignature.h"
#include "support/TestFolder.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

struct ToolRun {
    int code = -1;
    QByteArray out;
};

ToolRun Tool(const QStringList& arguments) {
    QProcess tool;
    tool.start(qEnvironmentVariable("KALVO_BIN") + u"/kalvo-signieren"_s, arguments);
    EXPECT_TRUE(tool.waitForFinished(60000));
    return {tool.exitCode(), tool.readAllStandardOutput()};
}

class SigningToolTest : public ::testing::Test {
protected:
    QString Path(const char* name) const { return folder_.Path(QString::fromUtf8(name)); }

    test::TestFolder folder_;
};

TEST_F(SigningToolTest, SignsWhatTheProgramAccepts) {
    const ToolRun keys = Tool({u"schluessel"_s, Path("geheim")});
    ASSERT_EQ(keys.code, 0);
    EXPECT_TRUE(ComponentSignature::IsPublicKey(keys.out));
    EXPECT_EQ(QFileInfo(Path("geheim")).permissions() & (QFile::ReadGroup | QFile::ReadOther), 0);
    folder_.Write(u"ordner/CdBase.ocx"_s, "Inhalt");
    const QString file = Path("ordner/CdBase.ocx");
    ASSERT_EQ(Tool({u"signieren"_s, Path("geheim"), file}).code, 0);
    const QByteArray signature = folder_.Read(u"ordner/CdBase.ocx.sig"_s);
    EXPECT_TRUE(ComponentSignature::Verify(u"CdBase.ocx"_s, "Inhalt", signature, keys.out));
    EXPECT_FALSE(ComponentSignature::Verify(u"CdBase.ocx"_s, "inhalt", signature, keys.out));
    EXPECT_FALSE(ComponentSignature::Verify(u"wenzo.dll"_s, "Inhalt", signature, keys.out));

    const QString key = QString::fromLatin1(keys.out.trimmed());
    EXPECT_EQ(Tool({u"pruefen"_s, key, file}).code, 0);
    folder_.Write(u"ordner/CdBase.ocx"_s, "geändert");
    EXPECT_EQ(Tool({u"pruefen"_s, key, file}).code, 1);
}

TEST_F(SigningToolTest, ASecretKeyIsNeverOverwrittenAndFaultsAreTold) {
    folder_.Write(u"geheim"_s, "wertvoll");
    EXPECT_EQ(Tool({u"schluessel"_s, Path("geheim")}).code, 1);
    EXPECT_EQ(folder_.Read(u"geheim"_s), "wertvoll");
    folder_.Write(u"a.dll"_s, "Inhalt");
    EXPECT_EQ(Tool({u"signieren"_s, Path("geheim"), Path("a.dll")}).code, 1) << "that is no key";
    EXPECT_EQ(Tool({u"signieren"_s, Path("fehlt"), Path("a.dll")}).code, 1);
    EXPECT_FALSE(QFile::exists(Path("a.dll.sig")));
    EXPECT_EQ(Tool({u"pruefen"_s, u"ff"_s, Path("a.dll")}).code, 1);
    EXPECT_EQ(Tool({}).code, 2);
}

} // namespace
} // namespace kalvo
