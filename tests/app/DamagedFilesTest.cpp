#include "app/DamagedFiles.h"

#include "playlists/ChartsFile.h"
#include "support/TestFolder.h"

#include <QDir>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

TEST(DamagedFiles, KnowSettingsFromWhatIsNone) {
    for (const char* sound : {"[Style]\r\nSkin=Grey\r\n", "; nur ein Kommentar\n\n", "Skin=x\n[Style]\n",
                              "\xEF\xBB\xBF[A]\n", "[Mixer]\nM\xFC=1\n", "[A"})
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
    ASSERT_TRUE(ChartsFile(place.Path(u"Charts"_s), clock).Count({}, u"/musik/a.mp3"_s, {}, {}, clock.Now()));
    place.Write(u"Charts"_s, QByteArray(392, ' ') + place.Read(u"Charts"_s) + "Rest"); // one record is sound
    place.Write(u"kalvo.ini"_s, "[Style]\nSkin=Grey\n");
    place.Write(u"kalvo.dll"_s, QByteArray(64, '\0'));
    place.Write(u"optionen.dll"_s, "");
    EXPECT_EQ(SetDamagedFilesAside(folder, clock).size(), 1);
    for (const QByteArray& garbage : {QByteArray("x"), QByteArray("a\n/").repeated(200)}) {
        place.Write(u"Charts"_s, garbage);
        const QStringList told = SetDamagedFilesAside(folder, clock);
        ASSERT_EQ(told.size(), 1);
        EXPECT_TRUE(told[0].startsWith(u"Charts war beschädigt, die Charts beginnen von vorn. "_s));
    }
    EXPECT_EQ(QDir(place.Path()).entryList({u"*.defekt-*"_s}).size(), 3);
}

} // namespace
} // namespace kalvo
