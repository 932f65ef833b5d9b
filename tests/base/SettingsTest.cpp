#include "base/Settings.h"

#include "support/TestFolder.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>
#include <unistd.h>

namespace kalvo {

class SettingsTest : public ::testing::Test {
protected:
    QString Get(const char* key, const char* fallback = "-") const {
        return settings.GetSetting(QStringLiteral("S"), QString::fromUtf8(key), QString::fromUtf8(fallback));
    }
    void Put(const char* key, const QString& value) {
        settings.PutSetting(QStringLiteral("S"), QString::fromUtf8(key), value);
    }

    test::TestFolder folder;
    Settings settings{folder.Path(QStringLiteral("kalvo.ini"))};
};

TEST_F(SettingsTest, MissingFileGivesDefaultsAndIsCreatedByTheFirstWrite) {
    EXPECT_EQ(Get("a"), QStringLiteral("-"));
    EXPECT_TRUE(settings.GetSwitch(QStringLiteral("S"), QStringLiteral("a"), true));
    Put("a", QStringLiteral("ü"));
    EXPECT_EQ(folder.Read(QStringLiteral("kalvo.ini")), QByteArray("[S]\r\na=\xFC\r\n"));
}

TEST_F(SettingsTest, CutsAt255OnReading) {
    Put("a", QString(300, u'x'));
    EXPECT_EQ(Get("a"), QString(255, u'x'));
    Put("a", QString(254, u'x') + QStringLiteral("😀"));
    EXPECT_EQ(Get("a"), QString(254, u'x')) << "no half characters";
    EXPECT_TRUE(folder.Read(QStringLiteral("kalvo.ini")).contains("😀"));
}

TEST_F(SettingsTest, ConvertsOnlyWhatFits) {
    const struct {
        const char* text;
        int number;
        bool isOn;
    } cases[] = {{"1", 1, true}, {"0", 0, false},   {"-7", -7, false},
                 {"", 5, false}, {"1,5", 5, false}, {"ja", 5, false}};
    for (const auto& [text, number, isOn] : cases) {
        Put("a", QString::fromUtf8(text));
        EXPECT_EQ(settings.GetNumber(QStringLiteral("S"), QStringLiteral("a"), 5), number) << text;
        EXPECT_EQ(settings.GetSwitch(QStringLiteral("S"), QStringLiteral("a"), true), isOn) << text;
    }
}

TEST_F(SettingsTest, SeesForeignChangesAndKeepsThem) {
    Put("a", QStringLiteral("1"));
    folder.Write(QStringLiteral("kalvo.ini"), "[S]\na=22\nfremd=x\n");
    EXPECT_EQ(Get("a"), QStringLiteral("22"));
    {
        const Settings::Pass pass(settings);
        Put("b", QStringLiteral("3"));
        folder.Write(QStringLiteral("kalvo.ini"), "[S]\na=222\nfremd=yy\n");
        EXPECT_EQ(Get("b"), QStringLiteral("3"));
        EXPECT_EQ(folder.Read(QStringLiteral("kalvo.ini")), QByteArray("[S]\na=222\nfremd=yy\n"));
    }
    EXPECT_EQ(folder.Read(QStringLiteral("kalvo.ini")), QByteArray("[S]\na=222\nfremd=yy\nb=3\n"));
}

TEST_F(SettingsTest, PassesNestAndCoverSeveralFiles) {
    const QString other = folder.Path(QStringLiteral("other.ini"));
    {
        const Settings::Pass outer(settings);
        {
            const Settings::Pass inner(settings);
            Put("a", QStringLiteral("1"));
            settings.PutSetting(QStringLiteral("S"), QStringLiteral("a"), QStringLiteral("2"), other);
        }
        EXPECT_FALSE(QFile::exists(other));
    }
    EXPECT_EQ(Settings(other).GetSetting(QStringLiteral("s"), QStringLiteral("A"), {}), QStringLiteral("2"));
    EXPECT_EQ(Get("a"), QStringLiteral("1"));
}

TEST_F(SettingsTest, AFailedWriteKeepsTheValueForTheNextOne) {
    Settings lost(folder.Path(QStringLiteral("later/kalvo.ini")));
    lost.PutSetting(QStringLiteral("S"), QStringLiteral("a"), QStringLiteral("1"));
    EXPECT_EQ(lost.GetSetting(QStringLiteral("S"), QStringLiteral("a"), {}), QStringLiteral("1"));
    ASSERT_TRUE(QDir().mkpath(folder.Path(QStringLiteral("later"))));
    lost.PutSetting(QStringLiteral("S"), QStringLiteral("b"), QStringLiteral("2"));
    EXPECT_EQ(folder.Read(QStringLiteral("later/kalvo.ini")), QByteArray("[S]\r\na=1\r\nb=2\r\n"));
}

TEST_F(SettingsTest, NeverReplacesWhatItCannotRead) {
    if (::geteuid() == 0)
        GTEST_SKIP() << "nothing is unreadable for the administrator";
    const QString path = folder.Write(QStringLiteral("kalvo.ini"), "[S]\na=1\n");
    ASSERT_TRUE(QFile::setPermissions(path, {}));
    Put("b", QStringLiteral("2"));
    EXPECT_EQ(Get("a"), QStringLiteral("-"));
    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner));
    EXPECT_EQ(folder.Read(QStringLiteral("kalvo.ini")), QByteArray("[S]\na=1\n"));
}

TEST_F(SettingsTest, ADamagedFileCountsAsMissingAndIsKept) {
    const QByteArray damaged = "[S]\na=1\n" + QByteArray(64, '\0');
    folder.Write(QStringLiteral("kalvo.ini"), damaged);
    EXPECT_EQ(Get("a"), QStringLiteral("-"));
    Put("a", QStringLiteral("2"));
    EXPECT_EQ(Get("a"), QStringLiteral("2")) << "for this run";
    EXPECT_EQ(folder.Read(QStringLiteral("kalvo.ini")), damaged);
    ASSERT_TRUE(QFile::remove(folder.Path(QStringLiteral("kalvo.ini"))));
    Put("b", QStringLiteral("3"));
    EXPECT_EQ(folder.Read(QStringLiteral("kalvo.ini")), QByteArray("[S]\r\na=2\r\nb=3\r\n"));
}

} // namespace kalvo
