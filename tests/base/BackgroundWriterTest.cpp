#include "base/BackgroundWriter.h"

#include "support/TestFolder.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

TEST(BackgroundWriter, LeavesTheLastContentOfEachFile) {
    const test::TestFolder folder;
    BackgroundWriter writer;
    for (int number = 0; number <= 50; ++number) {
        writer.Write(folder.Path(QStringLiteral("a")), QByteArray::number(number));
        writer.Write(folder.Path(QStringLiteral("b")), QByteArray::number(-number));
    }
    writer.Flush();
    EXPECT_EQ(folder.Read(QStringLiteral("a")), "50");
    EXPECT_EQ(folder.Read(QStringLiteral("b")), "-50");
    EXPECT_EQ(QDir(folder.Path()).entryList(QDir::Files | QDir::Hidden).size(), 2); // no temporaries
}

TEST(BackgroundWriter, KeepsTheOrderOfWritesAndRemovals) {
    const test::TestFolder folder;
    const QString path = folder.Path(QStringLiteral("a"));
    BackgroundWriter writer;
    writer.Write(path, "old");
    writer.Remove(path);
    writer.Flush();
    EXPECT_FALSE(QFile::exists(path));
    writer.Remove(path);
    writer.Write(path, "new");
    writer.Flush();
    EXPECT_EQ(folder.Read(QStringLiteral("a")), "new");
}

TEST(BackgroundWriter, WritesWhatWaitsAtItsEndAndPassesOverWhatCannotBeWritten) {
    const test::TestFolder folder;
    {
        BackgroundWriter writer;
        writer.Write(folder.Path(QStringLiteral("no such folder/a")), "lost");
        writer.Write(folder.Path(QStringLiteral("z")), "kept");
    }
    EXPECT_EQ(folder.Read(QStringLiteral("z")), "kept");
}

} // namespace
} // namespace kalvo
