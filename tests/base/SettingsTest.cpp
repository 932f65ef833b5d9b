#include "base/Settings.h"

#include "support/TestFolder.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>
#include <unistd.h>

namespace kalvo {

using namespace Qt::StringLiterals;

class SettingsTest : public ::testing::Test {
protected:
    QString Get(const char* key, const char* fallback = "-") const {
        return settings.GetSetting(u"S"_s, QString::fromUtf8(key), QString::fromUtf8(fallback));
    }
    void Put(const char* key, const QString& value) { settings.PutSetting(u"S"_s, QString::fromUtf8(key), value); }

    test::TestFolder folder;
    Settings settings{folder.Path(u"kalvo.ini"_s)};
};

TEST_F(SettingsTest, MissingFileGivesDefaultsAndIsCreatedByTheFirstWrite) {
    EXPECT_EQ(Get("a"), u"-"_s);
    EXPECT_TRUE(settings.GetSwitch(u"S"_s, u"a"_s, true));
    Put("a", u"ü"_s);
    EXPECT_EQ(folder.Read(u"kalvo.ini"_s), QByteArray("[S]\r\na=\xFC\r\n"));
}

TEST_F(SettingsTest, CutsAt255OnReading) {
    Put("a", QString(300, u'x'));
    EXPECT_EQ(Get("a"), QString(255, u'x'));
    Put("a", QString(254, u'x') + u"😀"_s);
    EXPECT_EQ(Get("a"), QString(254, u'x')) << "no half characters";
    EXPECT_TRUE(folder.Read(u"kalvo.ini"_s).contains("😀"));
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
        EXPECT_EQ(settings.GetNumber(u"S"_s, u"a"_s, 5), number) << text;
        EXPECT_EQ(settings.GetSwitch(u"S"_s, u"a"_s, true), isOn) << text;
    }
}

TEST_F(SettingsTest, SeesForeignChangesAndKeepsThem) {
    Put("a", u"1"_s);
    folder.Write(u"kalvo.ini"_s, "[S]\na=22\nfremd=x\n");
    EXPECT_EQ(Get("a"), u"22"_s);
    {
        const Settings::Pass pass(settings);
        Put("b", u"3"_s);
        folder.Write(u"kalvo.ini"_s, "[S]\na=222\nfremd=yy\n");
        EXPECT_EQ(Get("b"), u"3"_s);
        EXPECT_EQ(folder.Read(u"kalvo.ini"_s), QByteArray("[S]\na=222\nfremd=yy\n"));
    }
    EXPECT_EQ(folder.Read(u"kalvo.ini"_s), QByteArray("[S]\na=222\nfremd=yy\nb=3\n"));
}

TEST_F(SettingsTest, PassesNestAndCoverSeveralFiles) {
    const QString other = folder.Path(u"other.ini"_s);
    {
        const Settings::Pass outer(settings);
        {
            const Settings::Pass inner(settings);
            Put("a", u"1"_s);
            settings.PutSetting(u"S"_s, u"a"_s, u"2"_s, other);
        }
        EXPECT_FALSE(QFile::exists(other));
    }
    EXPECT_EQ(Settings(other).GetSetting(u"s"_s, u"A"_s, {}), u"2"_s);
    EXPECT_EQ(Get("a"), u"1"_s);
}

TEST_F(SettingsTest, AFailedWriteKeepsTheValueForTheNextOne) {
    Settings lost(folder.Path(u"later/kalvo.ini"_s));
    lost.PutSetting(u"S"_s, u"a"_s, u"1"_s);
    EXPECT_EQ(lost.GetSetting(u"S"_s, u"a"_s, {}), u"1"_s);
    ASSERT_TRUE(QDir().mkpath(folder.Path(u"later"_s)));
    lost.PutSetting(u"S"_s, u"b"_s, u"2"_s);
    EXPECT_EQ(folder.Read(u"later/kalvo.ini"_s), QByteArray("[S]\r\na=1\r\nb=2\r\n"));
}

TEST_F(SettingsTest, NeverReplacesWhatItCannotRead) {
    if (::geteuid() == 0)
        GTEST_SKIP() << "nothing is unreadable for the administrator";
    const QString path = folder.Write(u"kalvo.ini"_s, "[S]\na=1\n");
    ASSERT_TRUE(QFile::setPermissions(path, {}));
    Put("b", u"2"_s);
    EXPECT_EQ(Get("a"), u"-"_s);
    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner));
    EXPECT_EQ(folder.Read(u"kalvo.ini"_s), QByteArray("[S]\na=1\n"));
}

TEST_F(SettingsTest, ADamagedFileCountsAsMissingAndIsKept) {
    const QByteArray damaged = "[S]\na=1\n" + QByteArray(64, '\0');
    folder.Write(u"kalvo.ini"_s, damaged);
    EXPECT_EQ(Get("a"), u"-"_s);
    Put("a", u"2"_s);
    EXPECT_EQ(Get("a"), u"2"_s) << "for this run";
    EXPECT_EQ(folder.Read(u"kalvo.ini"_s), damaged);
    ASSERT_TRUE(QFile::remove(folder.Path(u"kalvo.ini"_s)));
    Put("b", u"3"_s);
    EXPECT_EQ(folder.Read(u"kalvo.ini"_s), QByteArray("[S]\r\na=2\r\nb=3\r\n"));
}

} // namespace kalvo
