#include "app/CommandLine.h"

#include <QDir>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

CommandLine Parse(QStringList arguments) {
    arguments.prepend(QStringLiteral("kalvo"));
    return ParseCommandLine(arguments);
}

TEST(CommandLine, TakesEveryOptionAndMakesPathsAbsolute) {
    const CommandLine line =
        Parse({QStringLiteral("--datenordner"), QStringLiteral("daten"), QStringLiteral("--geraet=0"),
               QStringLiteral("--mix"), QStringLiteral("aus.wav"), QStringLiteral("a.mp3"), QStringLiteral("/b.ogg")});
    EXPECT_TRUE(line.error.isEmpty()) << line.error.toStdString();
    EXPECT_EQ(line.dataFolder, QDir::current().absoluteFilePath(QStringLiteral("daten")));
    EXPECT_EQ(line.device, 0);
    EXPECT_EQ(line.mixOutput, QDir::current().absoluteFilePath(QStringLiteral("aus.wav")));
    EXPECT_EQ(line.files,
              QStringList({QDir::current().absoluteFilePath(QStringLiteral("a.mp3")), QStringLiteral("/b.ogg")}));
    EXPECT_TRUE(line.IsWindowless());
}

TEST(CommandLine, OpensTheWindowUnlessTheJobNeedsNone) {
    EXPECT_FALSE(Parse({}).IsWindowless());
    EXPECT_FALSE(Parse({QStringLiteral("--vorfuehrung"), QStringLiteral("--ohne-startauswahl")}).IsWindowless());
    EXPECT_FALSE(Parse({QStringLiteral("titel.mp3")}).IsWindowless());
    EXPECT_TRUE(Parse({QStringLiteral("--einlesen"), QStringLiteral("/musik")}).IsWindowless());
    EXPECT_TRUE(
        Parse({QStringLiteral("--vorfuehrung"), QStringLiteral("--mix"), QStringLiteral("x.wav")}).error.isEmpty());
}

TEST(CommandLine, RefusesWhatItCannotUnderstandInGerman) {
    const QList<QStringList> wrong{
        {QStringLiteral("--unsinn")},    {QStringLiteral("--geraet"), QStringLiteral("laut")},
        {QStringLiteral("--geraet=-3")}, {QStringLiteral("--mix"), QStringLiteral("x.wav")},
        {QStringLiteral("--einlesen")},  {QStringLiteral("--einlesen"), QString()}};
    for (const QStringList& arguments : wrong) {
        EXPECT_FALSE(Parse(arguments).error.isEmpty()) << arguments.join(u' ').toStdString();
    }
}

} // namespace
} // namespace kalvo
