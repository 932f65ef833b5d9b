#include "app/DamagedFiles.h"

#include "support/TestFolder.h"

#include <QDir>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

TEST(DamagedFiles, KnowSettingsFromWhatIsNone) {
    for (const char* sound :
         {"[Style]\r\nSkin=Grey\r\n", "; nur ein Kommentar\n\n", "Skin=x\n[Style]\n", "\xEF\xBB\xBF[A]\n",
          "[Mixer]\n\xDC"
          "berblendmodus=No Fading\n",
          "[A"})
        EXPECT_TRUE(IsSoundSettings(sound)) << sound;
    EXPECT_FALSE(IsSoundSettings(QByteArray(200, '\0')));
    EXPECT_FALSE(IsSoundSettings("[Style]\nSkin=" + QByteArray(1, '\0')));
    EXPECT_FALSE(IsSoundSettings("SQLite format 3"));
}

TEST(DamagedFiles, KnowValueFilesFromWhatIsNone) {
    for (const char* sound : {"1,2,3,\"/musik, \"\"neu\"\"\"\r\n", "1,,3", "10,-20,\"30\",x", "4\n", "\r\n"})
        EXPECT_TRUE(IsSoundValueFile(sound, 3)) << sound;
    for (const char* broken : {"kaputt", "1,zwei,3", "\x01\x02\x03", "<html>"})
        EXPECT_FALSE(IsSoundValueFile(broken, 3)) << broken;
    EXPECT_TRUE(IsSoundValueFile("\"ein Text\"", 0));
}

TEST(DamagedFiles, AreSetAsideOnceAndTold) {
    const test::TestFolder place;
    const DataFolder folder(place.Path());
    const SystemClock clock;
    place.Write(QStringLiteral("kalvo.ini"), "[Style]\nSkin=Grey\n");
    place.Write(QStringLiteral("kalvo.dll"), QByteArray(64, '\0'));
    place.Write(QStringLiteral("optionen.dll"), "");
    place.Write(QStringLiteral("mp3tabelle.dll"), "nichts,davon,ist,eine,Zahl");
    const QStringList told = SetDamagedFilesAside(folder, clock);
    ASSERT_EQ(told.size(), 2);
    EXPECT_TRUE(told[0].startsWith(QStringLiteral("kalvo.dll war beschädigt"))) << told[0].toStdString();
    EXPECT_TRUE(told[1].startsWith(QStringLiteral("mp3tabelle.dll war beschädigt"))) << told[1].toStdString();

    const QDir left(place.Path());
    EXPECT_TRUE(left.exists(QStringLiteral("kalvo.ini")));
    EXPECT_FALSE(left.exists(QStringLiteral("kalvo.dll")));
    EXPECT_EQ(left.entryList({QStringLiteral("kalvo.dll.defekt-*")}).size(), 1);
    EXPECT_EQ(left.entryList({QStringLiteral("mp3tabelle.dll.defekt-*")}).size(), 1);
    EXPECT_TRUE(SetDamagedFilesAside(folder, clock).isEmpty());
}

} // namespace
} // namespace kalvo
