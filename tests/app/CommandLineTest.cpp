#include "app/CommandLine.h"

#include <QDir>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

CommandLine Parse(QStringList arguments) {
    arguments.prepend(u"kalvo"_s);
    return ParseCommandLine(arguments);
}

TEST(CommandLine, TakesEveryOptionAndMakesPathsAbsolute) {
    const CommandLine line =
        Parse({u"--datenordner"_s, u"daten/"_s, u"--geraet=0"_s, u"--mix"_s, u"aus.wav"_s, u"a.mp3"_s, u"/b.ogg"_s});
    EXPECT_TRUE(line.error.isEmpty()) << line.error.toStdString();
    EXPECT_EQ(line.dataFolder, QDir::current().absoluteFilePath(u"daten"_s));
    EXPECT_EQ(line.device, 0);
    EXPECT_EQ(line.mixOutput, QDir::current().absoluteFilePath(u"aus.wav"_s));
    EXPECT_EQ(line.files, QStringList({QDir::current().absoluteFilePath(u"a.mp3"_s), u"/b.ogg"_s}));
    EXPECT_TRUE(line.IsWindowless());
}

TEST(CommandLine, OpensTheWindowUnlessTheJobNeedsNone) {
    EXPECT_FALSE(Parse({}).IsWindowless());
    EXPECT_FALSE(Parse({u"--vorfuehrung"_s, u"--ohne-startauswahl"_s}).IsWindowless());
    EXPECT_FALSE(Parse({u"titel.mp3"_s}).IsWindowless());
    EXPECT_TRUE(Parse({u"--einlesen"_s, u"/musik"_s}).IsWindowless());
    EXPECT_TRUE(Parse({u"--vorfuehrung"_s, u"--mix"_s, u"x.wav"_s}).error.isEmpty());
}

TEST(CommandLine, RefusesWhatItCannotUnderstandInGerman) {
    const QList<QStringList> wrong{{u"--unsinn"_s},          {u"--geraet"_s, u"laut"_s}, {u"--geraet=-3"_s},
                                   {u"--mix"_s, u"x.wav"_s}, {u"--einlesen"_s},          {u"--einlesen"_s, QString()}};
    for (const QStringList& arguments : wrong) {
        EXPECT_FALSE(Parse(arguments).error.isEmpty()) << arguments.join(u' ').toStdString();
    }
}

} // namespace
} // namespace kalvo
