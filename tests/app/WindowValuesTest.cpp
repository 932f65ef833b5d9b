#include "app/WindowValues.h"

#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

TEST(WindowValues, ComeBackAsTheyWereWritten) {
    const test::TestFolder folder;
    WindowValues values;
    values.geometry = QRect(-20, 30, 1024, 700);
    values.maximised = true;
    values.consoleHeight = 400;
    values.continuous = false;
    values.importFolder = u"/musik/\"Männer\", neu"_s;
    const QString path = folder.Path(u"kalvo.dll"_s);
    ASSERT_TRUE(values.Write(path));
    const WindowValues read = WindowValues::Read(path);
    EXPECT_EQ(read.geometry, values.geometry);
    EXPECT_TRUE(read.maximised);
    EXPECT_EQ(read.consoleHeight, 400);
    EXPECT_FALSE(read.continuous);
    EXPECT_TRUE(read.automatic);
    EXPECT_EQ(read.importFolder, values.importFolder);
}

TEST(WindowValues, TakeDefaultsForWhatIsMissingOrBroken) {
    const test::TestFolder folder;
    const QString path = folder.Write(u"kalvo.dll"_s, "10,20,unsinn,,0,\"\",99");
    const WindowValues read = WindowValues::Read(path);
    EXPECT_TRUE(read.geometry.isNull());
    EXPECT_EQ(read.consoleHeight, 318);
    EXPECT_EQ(read.treeWidth, 99);
    EXPECT_TRUE(read.continuous);
    EXPECT_TRUE(WindowValues::Read(folder.Path(u"keine"_s)).importFolder.isEmpty());
    folder.Write(u"kalvo.dll"_s, "0,0,2000000000,700,0,-5,1999999999,1,#TRUE#,0,\"/m\",zu,viele");
    const WindowValues wild = WindowValues::Read(path);
    EXPECT_TRUE(wild.geometry.isNull());
    EXPECT_EQ(std::pair(wild.consoleHeight, wild.treeWidth), std::pair(318, 210));
    EXPECT_FALSE(wild.automatic);
    EXPECT_EQ(wild.importFolder, u"/m"_s);
}

} // namespace
} // namespace kalvo
