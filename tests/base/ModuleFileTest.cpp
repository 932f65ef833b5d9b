#include "base/ModuleFile.h"

#include "support/TestFolder.h"

#include <QFile>
#include <gtest/gtest.h>

#include <memory>

namespace kalvo {
namespace {

struct Nothing {
    virtual ~Nothing() = default;
};

std::unique_ptr<Nothing> Load(const test::TestFolder& folder, const QString& name) {
    return ModuleFile<Nothing>(folder.Path(), name, "CreateNothing").Create();
}

TEST(ModuleFileTest, WhatIsNoModuleGivesNothing) {
    // The test program itself has the form of one.
    QFile self(QStringLiteral("/proc/self/exe"));
    ASSERT_TRUE(self.open(QIODevice::ReadOnly));
    const QByteArray whole = self.readAll();
    const test::TestFolder folder;
    folder.Write(QStringLiteral("ganz.dll"), whole);
    EXPECT_TRUE(IsWholeModule(folder.Path(QStringLiteral("ganz.dll"))));
    const QByteArray broken[] = {{},
                                 "MZ keines",
                                 whole.left(64),
                                 whole.left(whole.size() / 2),
                                 whole.chopped(1),
                                 QByteArray(whole.size(), '\0')};
    for (const QByteArray& bytes : broken) {
        const QString path = folder.Write(QStringLiteral("kaputt.dll"), bytes);
        EXPECT_FALSE(IsWholeModule(path)) << bytes.size();
        EXPECT_EQ(Load(folder, QStringLiteral("kaputt.dll")), nullptr);
    }
    EXPECT_FALSE(IsWholeModule(folder.Path(QStringLiteral("fehlt.dll"))));
    EXPECT_EQ(Load(folder, QStringLiteral("fehlt.dll")), nullptr);
    EXPECT_FALSE(IsWholeModule(folder.Path()));
}

TEST(ModuleFileTest, TheVersionIsLowWordDotHighWord) {
    EXPECT_EQ(VersionText(0x00000002), QStringLiteral("2.0"));
    EXPECT_EQ(VersionText(0x00040002), QStringLiteral("2.4"));
}

} // namespace
} // namespace kalvo
