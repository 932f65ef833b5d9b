#include "base/ModuleFile.h"

#include "support/TestFolder.h"

#include <QFile>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

TEST(ModuleFileTest, WhatIsNoModuleGivesNothing) {
    // The test program itself has the form of one.
    QFile self(u"/proc/self/exe"_s);
    ASSERT_TRUE(self.open(QIODevice::ReadOnly));
    const QByteArray whole = self.readAll();
    const test::TestFolder folder;
    folder.Write(u"ganz.dll"_s, whole);
    EXPECT_TRUE(IsWholeModule(folder.Path(u"ganz.dll"_s)));
    for (const QByteArray& bytes : {QByteArray(), QByteArray("MZ keines"), whole.left(64), whole.left(whole.size() / 2),
                                    whole.chopped(1), QByteArray(whole.size(), '\0')}) {
        EXPECT_FALSE(IsWholeModule(folder.Write(u"kaputt.dll"_s, bytes))) << bytes.size();
        EXPECT_EQ(ModuleFile<QObject>(folder.Path(), u"kaputt.dll"_s, "CreateNothing").Create(), nullptr);
    }
    EXPECT_FALSE(IsWholeModule(folder.Path(u"fehlt.dll"_s)));
    EXPECT_FALSE(IsWholeModule(folder.Path()));
}

TEST(ModuleFileTest, TheVersionIsLowWordDotHighWord) {
    EXPECT_EQ(VersionText(0x00000002), u"2.0"_s);
    EXPECT_EQ(VersionText(0x00040002), u"2.4"_s);
}

} // namespace
} // namespace kalvo
