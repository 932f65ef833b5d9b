#include "base/BackgroundWriter.h"

#include "support/TestFolder.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

TEST(BackgroundWriter, LeavesTheLastContentOfEachFile) {
    const test::TestFolder folder;
    BackgroundWriter writer;
    for (int number = 0; number <= 50; ++number) {
        writer.Write(folder.Path(u"a"_s), QByteArray::number(number));
        writer.Write(folder.Path(u"b"_s), QByteArray::number(-number));
    }
    writer.Flush();
    EXPECT_EQ(folder.Read(u"a"_s), "50");
    EXPECT_EQ(folder.Read(u"b"_s), "-50");
    EXPECT_EQ(QDir(folder.Path()).entryList(QDir::Files | QDir::Hidden).size(), 2); // no temporaries
}

TEST(BackgroundWriter, KeepsTheOrderOfWritesAndRemovals) {
    const test::TestFolder folder;
    const QString path = folder.Path(u"a"_s);
    BackgroundWriter writer;
    writer.Write(path, "old");
    writer.Remove(path);
    writer.Flush();
    EXPECT_FALSE(QFile::exists(path));
    writer.Remove(path);
    writer.Write(path, "new");
    writer.Flush();
    EXPECT_EQ(folder.Read(u"a"_s), "new");
}

TEST(BackgroundWriter, WritesWhatWaitsAtItsEndAndPassesOverWhatCannotBeWritten) {
    const test::TestFolder folder;
    {
        BackgroundWriter writer;
        writer.Write(folder.Path(u"no such folder/a"_s), "lost");
        writer.Write(folder.Path(u"z"_s), "kept");
    }
    EXPECT_EQ(folder.Read(u"z"_s), "kept");
}

} // namespace
} // namespace kalvo
