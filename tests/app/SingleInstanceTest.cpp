#include "app/SingleInstance.h"

#include "support/TestFolder.h"
#include "support/WaitUntil.h"

#include <QFile>
#include <QProcess>
#include <gtest/gtest.h>

#include <future>

namespace kalvo {
namespace {

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
    const DataFolder folder(place.Path(QStringLiteral("Kalvo")));
    SingleInstance first(folder);
    ASSERT_TRUE(first.IsFirst());

    const QStringList early{QStringLiteral("/musik/früh.mp3"), QStringLiteral("/musik/b c.ogg")};
    EXPECT_TRUE(HandOver(folder, early));
    EXPECT_EQ(first.TakeFiles(), early);
    EXPECT_TRUE(first.TakeFiles().isEmpty());

    QList<QStringList> received;
    QObject::connect(&first, &SingleInstance::Received, [&](const QStringList& files) { received.append(files); });
    EXPECT_TRUE(HandOver(folder, {QStringLiteral("/musik/später.mp3")}));
    EXPECT_TRUE(HandOver(folder, {}));
    EXPECT_EQ(received, (QList<QStringList>{{QStringLiteral("/musik/später.mp3")}, {}}));
    EXPECT_TRUE(first.TakeFiles().isEmpty());
}

TEST(SingleInstance, OtherFoldersAndTheNextStartAreFirstAgain) {
    const test::TestFolder place;
    const DataFolder folder(place.Path(QStringLiteral("Kalvo")));
    {
        const SingleInstance first(folder);
        const SingleInstance elsewhere(DataFolder(place.Path(QStringLiteral("andere"))));
        EXPECT_TRUE(first.IsFirst() && elsewhere.IsFirst());
    }
    EXPECT_TRUE(SingleInstance(folder).IsFirst());
}

TEST(SingleInstance, ACrashedProgramKeepsNobodyOut) {
    const test::TestFolder place;
    const DataFolder folder(place.Path());
    QProcess gone; // its number belongs to nobody afterwards
    gone.start(QStringLiteral("true"), {});
    ASSERT_TRUE(gone.waitForStarted());
    const QByteArray number = QByteArray::number(gone.processId());
    ASSERT_TRUE(gone.waitForFinished());
    place.Write(QStringLiteral("kalvo.sperre"), number + "\nkalvo\n" + QSysInfo::machineHostName().toUtf8() + '\n');
    EXPECT_TRUE(SingleInstance(folder).IsFirst());
    place.Write(QStringLiteral("kalvo.sperre"), {}); // broken off between creating and writing it
    const SingleInstance next(folder);
    EXPECT_TRUE(next.IsFirst());
    EXPECT_FALSE(SingleInstance(folder).IsFirst());
}

TEST(SingleInstance, WithoutALockTheListeningTellsTheFirst) {
    const test::TestFolder place;
    place.Write(QStringLiteral("datei"), "a file where a folder is wanted");
    const DataFolder folder(place.Path(QStringLiteral("datei/Kalvo")));
    SingleInstance first(folder);
    ASSERT_TRUE(first.IsFirst());
    EXPECT_TRUE(HandOver(folder, {QStringLiteral("/a.mp3")}));
    EXPECT_EQ(first.TakeFiles(), QStringList{QStringLiteral("/a.mp3")});
}

} // namespace
} // namespace kalvo
