// What desktops read of the program, checked by the tools that they come with.

#include "app/MprisValues.h"
#include "base/Settings.h"
#include "support/TestFolder.h"

#include <QProcess>
#include <QStandardPaths>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

QString DesktopFile(const QString& name) {
    return qEnvironmentVariable("KALVO_SOURCE") + u"/packaging/desktop/"_s + name;
}

struct ToolOutcome {
    int code = -1; ///< -1: did not run to its end
    QString said;
};

ToolOutcome RunTool(const QString& program, const QStringList& arguments, const QString& dataHome = {}) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    if (!dataHome.isEmpty())
        environment.insert(u"XDG_DATA_HOME"_s, dataHome);
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    const bool done = process.waitForFinished() && process.exitStatus() == QProcess::NormalExit;
    return {done ? process.exitCode() : -1, QString::fromUtf8(process.readAll())};
}

bool Have(const char* program) {
    return !QStandardPaths::findExecutable(QLatin1String(program)).isEmpty();
}

TEST(DesktopFilesTest, TheDesktopFileIsValidAndOffersWhatPlayersOffer) {
    if (!Have("desktop-file-validate"))
        GTEST_SKIP() << "desktop-file-utils is not installed";
    const ToolOutcome outcome = RunTool(u"desktop-file-validate"_s, {DesktopFile(u"kalvo.desktop"_s)});
    EXPECT_EQ(outcome.code, 0) << outcome.said.toStdString();
    EXPECT_EQ(outcome.said, QString());
    const Settings file(DesktopFile(u"kalvo.desktop"_s));
    EXPECT_EQ(file.GetSetting(u"Desktop Entry"_s, u"MimeType"_s, {}), mpris::MimeTypes().join(u';') + u';');
}

TEST(DesktopFilesTest, TheMetadataAreValidAndOfThisVersion) {
    if (!Have("appstreamcli"))
        GTEST_SKIP() << "appstream is not installed";
    const QString file = qEnvironmentVariable("KALVO_BIN") + u"/../packaging/example.kalvo.kalvo.metainfo.xml"_s;
    const ToolOutcome outcome = RunTool(u"appstreamcli"_s, {u"validate"_s, u"--no-net"_s, file});
    EXPECT_EQ(outcome.code, 0) << outcome.said.toStdString();
    QFile text(file);
    ASSERT_TRUE(text.open(QIODevice::ReadOnly));
    EXPECT_TRUE(text.readAll().contains("<release version=\"" KALVO_VERSION "\""));
}

TEST(DesktopFilesTest, EveryPlaylistFileIsKnownByItsType) {
    if (!Have("update-mime-database") || !Have("gio"))
        GTEST_SKIP() << "shared-mime-info or gio is not installed";
    QFile types(DesktopFile(u"kalvo-mime.xml"_s));
    ASSERT_TRUE(types.open(QIODevice::ReadOnly));
    const test::TestFolder folder;
    folder.Write(u"mime/packages/kalvo.xml"_s, types.readAll());
    const ToolOutcome update = RunTool(u"update-mime-database"_s, {folder.Path(u"mime"_s)});
    ASSERT_EQ(update.code, 0) << update.said.toStdString();
    const struct {
        const char* name;
        const char* content;
        const char* type;
    } cases[] = {{"Abend.wil", "SQLite format 3", "application/x-kalvo-wiedergabeliste"},
                 {"Abend.m3u", "#EXTM3U\n", "audio/x-mpegurl"},
                 {"Abend.pls", "[playlist]\n", "audio/x-scpls"}};
    for (const auto& c : cases) {
        const QString path = folder.Write(QLatin1String(c.name), QByteArray(c.content) + '\0');
        const ToolOutcome told =
            RunTool(u"gio"_s, {u"info"_s, u"-a"_s, u"standard::content-type"_s, path}, folder.Path());
        EXPECT_TRUE(told.said.contains(QLatin1String(c.type))) << c.name << '\n' << told.said.toStdString();
        EXPECT_TRUE(mpris::MimeTypes().contains(QLatin1String(c.type)));
    }
}

} // namespace
} // namespace kalvo
