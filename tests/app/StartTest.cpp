#include "app/CommandLine.h"
#include "app/SingleInstance.h"

#include "support/TestFolder.h"
#include "support/WaitUntil.h"

#include <QDir>
#include <QProcess>
#include <gtest/gtest.h>

#include <future>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

TEST(CommandLine, TakesEveryOptionAndMakesPathsAbsolute) {
    const CommandLine line =
        ParseCommandLine(u"kalvo --datenordner daten/ --geraet=0 --mix aus.wav a.mp3 /b.ogg"_s.split(u' '));
    EXPECT_TRUE(line.error.isEmpty()) << line.error.toStdString();
    EXPECT_EQ(line.dataFolder, QDir::current().absoluteFilePath(u"daten"_s));
    EXPECT_EQ(line.device, 0);
    EXPECT_EQ(line.mixOutput, QDir::current().absoluteFilePath(u"aus.wav"_s));
    EXPECT_EQ(line.files, QStringList({QDir::current().absoluteFilePath(u"a.mp3"_s), u"/b.ogg"_s}));
}

/** The files of a later start, handed over beside the first one's event loop. */
bool HandOver(const DataFolder& folder, const QStringList& files) {
    auto later = std::async(std::launch::async, [&] {
        const SingleInstance second(folder);
        return !second.IsFirst() && second.HandOver(files);
    });
    EXPECT_TRUE(
        test::WaitUntil([&later] { return later.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
    return later.get();
}

TEST(SingleInstance, HandsFilesToTheFirstOfTheFolder) {
    const test::TestFolder place;
    const DataFolder folder(place.Path(u"Kalvo"_s));
    SingleInstance first(folder);
    ASSERT_TRUE(first.IsFirst());

    const QStringList early{u"/musik/früh.mp3"_s, u"/musik/b c.ogg"_s};
    EXPECT_TRUE(HandOver(folder, early));
    EXPECT_EQ(first.TakeFiles(), early);
    EXPECT_TRUE(first.TakeFiles().isEmpty());

    QList<QStringList> received;
    QObject::connect(&first, &SingleInstance::Received, [&](const QStringList& files) { received.append(files); });
    EXPECT_TRUE(HandOver(folder, {u"/musik/später.mp3"_s}));
    EXPECT_TRUE(HandOver(folder, {}));
    EXPECT_EQ(received, (QList<QStringList>{{u"/musik/später.mp3"_s}, {}}));
    EXPECT_TRUE(first.TakeFiles().isEmpty());
}

TEST(SingleInstance, ACrashedProgramKeepsNobodyOut) {
    const test::TestFolder place;
    const DataFolder folder(place.Path());
    QProcess gone; // its number belongs to nobody afterwards
    gone.start(u"true"_s, {});
    ASSERT_TRUE(gone.waitForStarted());
    const QByteArray number = QByteArray::number(gone.processId());
    ASSERT_TRUE(gone.waitForFinished());
    place.Write(u"kalvo.sperre"_s, number + "\nkalvo\n" + QSysInfo::machineHostName().toUtf8() + '\n');
    EXPECT_TRUE(SingleInstance(folder).IsFirst()); // and gone again
    place.Write(u"kalvo.sperre"_s, {});            // broken off between creating and writing it
    const SingleInstance next(folder);
    EXPECT_TRUE(next.IsFirst());
    EXPECT_FALSE(SingleInstance(folder).IsFirst());
    EXPECT_TRUE(SingleInstance(DataFolder(place.Path(u"andere"_s))).IsFirst()) << "another folder";
}

} // namespace
} // namespace kalvo
