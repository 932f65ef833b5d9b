#include "support/TestFolder.h"
#include "support/WaitUntil.h"
#include "support/XServer.h"
#include "system/Program.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace kalvo::test {
namespace {

TEST(CommandLineOfTheProgram, TellsVersionAndHelpWithoutAScreen) {
    const ProgramResult version = RunProgram({QStringLiteral("--version")});
    EXPECT_EQ(version.exitCode, 0) << version.errors.toStdString();
    EXPECT_TRUE(version.output.contains(QStringLiteral("0.1.0"))) << version.output.toStdString();

    const ProgramResult help = RunProgram({QStringLiteral("--help")});
    EXPECT_EQ(help.exitCode, 0);
    for (const char* option : {"--datenordner", "--geraet", "--einlesen", "--mix", "--vorfuehrung"})
        EXPECT_TRUE(help.output.contains(QLatin1String(option))) << option;
}

TEST(CommandLineOfTheProgram, RefusesWhatItDoesNotKnow) {
    for (const char* wrong : {"--gibtesnicht", "--mix", "--geraet=laut"}) {
        const ProgramResult result = RunProgram({QString::fromLatin1(wrong)});
        EXPECT_GT(result.exitCode, 0) << wrong;
        EXPECT_FALSE(result.errors.isEmpty()) << wrong;
    }
}

TEST(Start, LaysOutTheDataFolderAndRunsOncePerFolder) {
    if (!XServer::IsInstalled())
        GTEST_SKIP() << "Xvfb is not installed";
    const XServer screen;
    const TestFolder folder;
    const QStringList arguments{QStringLiteral("--datenordner"), folder.Path(QStringLiteral("Kalvo")),
                                QStringLiteral("--geraet"), QStringLiteral("0"), QStringLiteral("--ohne-startauswahl")};
    const auto first = StartProgram(screen.Display(), arguments);
    const auto exists = [&folder](const char* name) {
        return QFile::exists(folder.Path(QStringLiteral("Kalvo/") + QLatin1String(name)));
    };
    ASSERT_TRUE(WaitUntil([&] { return exists("Musikarchiv/default.mav") && exists("Wiedergabeliste/default.mav"); }));
    for (const char* name : {"Temp", "CdArchiv", "Musik", "Hintergruende", "Sample"})
        EXPECT_TRUE(exists(name)) << name;

    const auto second = StartProgram(screen.Display(), arguments);
    EXPECT_TRUE(second->waitForFinished(20'000));
    EXPECT_EQ(second->readAllStandardOutput(), "");
    EXPECT_EQ(first->state(), QProcess::Running);
}

} // namespace
} // namespace kalvo::test
