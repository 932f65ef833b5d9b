#include "playlists/M3uReader.h"
#include "playlists/M3uWriter.h"
#include "playlists/PlaylistSupport.h"

#include <gtest/gtest.h>

namespace kalvo::test {
namespace {

/** Each title as "path|artist|title|duration", one a line. */
std::string Read(const QByteArray& bytes, const char* path = "/x/list.m3u") {
    QString text;
    for (const PlaylistEntry& entry : ReadM3u(bytes, QString::fromUtf8(path)))
        text += entry.path + u'|' + entry.artist + u'|' + entry.title + u'|' + entry.duration + u'\n';
    return text.toStdString();
}

TEST(M3uReader, PathsOfAPlainFile) {
    EXPECT_EQ(Read("C:\\Musik\\a.mp3\r\n\\\\server\\share\\b.ogg\r\nsub\\c.MP3\r\n", "D:\\x\\list.m3u"),
              "C:\\Musik\\a.mp3||a|0\n\\\\server\\share\\b.ogg||b|0\nD:\\x\\sub\\c.MP3||c|0\n");
    EXPECT_EQ(Read("sub\\c.mp3\n../d.ogg\n/abs/e.mp3\nZ:/f.mp3"),
              "/x/sub/c.mp3||c|0\n/x/../d.ogg||d|0\n/abs/e.mp3||e|0\nZ:/f.mp3||f|0\n");
    EXPECT_EQ(Read("http://radio/a.mp3\nwww.radio.de/b.mp3\nHTTP://x/c.mp3\ncover.jpg\nx.mp3.bak\n#d.mp3\n\n"), "");
    EXPECT_EQ(Read("Mara Lind - Blaue-Stunde.mp3\na-b/Hafen .OGG\n-x.mp3"),
              "/x/Mara Lind - Blaue-Stunde.mp3|Mara Lind|Blaue-Stunde|0\n/x/a-b/Hafen .OGG||Hafen|0\n/x/-x.mp3||x|0\n");
}

TEST(M3uReader, AddressesBecomePaths) {
    EXPECT_EQ(Read("file:///m/a%20b%C3%A4.mp3\nfile://localhost/m/c.mp3\nfile:///D:/m/d%25.ogg\nFILE://nas/m/e.mp3\n"),
              "/m/a bä.mp3||a bä|0\n/m/c.mp3||c|0\nD:/m/d%.ogg||d%|0\n//nas/m/e.mp3||e|0\n");
    EXPECT_EQ(Read("100%25.mp3"), "/x/100%25.mp3||100%25|0\n") << "a name, not an address";
}

TEST(M3uReader, ExtendedFilesTellNamesAndDurations) {
    EXPECT_EQ(Read("#EXTM3U\n#EXTINF:212,Mara Lind - Regen, Regen\na.mp3\n#EXTINF:-1,Nur Titel\n#EXTGRP:x\n"
                   "http://x/b.mp3\nc.ogg\nd.mp3\n"),
              "/x/a.mp3|Mara Lind|Regen, Regen|212\n/x/c.ogg||Nur Titel|-1\n/x/d.mp3||d|0\n");
    EXPECT_EQ(Read("#EXTINF:7\na - b.mp3\n#EXTINF:,\nc.mp3"), "/x/a - b.mp3|a|b|7\n/x/c.mp3||c|0\n");
}

TEST(M3uReader, PlsFilesAreReadByTheirKeys) {
    EXPECT_EQ(Read("[playlist]\r\nTitle2=B - File=2\r\nFile1=a.mp3\r\nTitle1=A - Eins\r\nLength1=61\r\n"
                   "File2=Title.ogg\r\nLength2=-1\r\nFile3=http://x/c.mp3\r\nTitle3=C\r\nFile4=d.mp3\r\n"
                   "NumberOfEntries=4\r\nVersion=2\r\n"),
              "/x/a.mp3|A|Eins|61\n/x/Title.ogg|B|File=2|0\n/x/d.mp3||d|0\n");
    EXPECT_EQ(Read("[Playlist]\nFile=a.mp3"), "/x/a.mp3||a|0\n");
}

TEST(M3uReader, UnderstandsBothEncodingsMarksAndLineEnds) {
    EXPECT_EQ(Read("M\xE4nner.mp3\rM\xC3\xA4nner.ogg\n"), "/x/Männer.mp3||Männer|0\n/x/Männer.ogg||Männer|0\n");
    EXPECT_EQ(Read("\xEF\xBB\xBF#EXTM3U\na.mp3"), "/x/a.mp3||a|0\n");
    const QString text = u"\uFEFF#EXTM3U\r\n#EXTINF:5,Ä - Ö\r\nü.mp3\r\n"_s;
    const QByteArray wide(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
    EXPECT_EQ(Read(wide), "/x/ü.mp3|Ä|Ö|5\n");
}

TEST(M3uWriter, WritesTheGivenLines) {
    QList<PlaylistEntry> entries = EntriesOf("ab");
    entries[0].title = u"Männer\nund"_s;
    const auto length = [](const QString& path) { return path.endsWith(u'a') ? 2.5 : 61.5; };
    EXPECT_EQ(WriteM3u(entries, length, false),
              QByteArray("#EXTM3U\r\n#EXTINF:2,A-a - M\xE4nner und\r\n/music/a\r\n#EXTINF:62,A-b - b\r\n/music/b\r\n"));
    entries[0].title = u"Ночь"_s;
    EXPECT_TRUE(WriteM3u(entries, length, false).contains("#EXTINF:2,A-a - Ночь\r\n")) << "in UTF-8";
    EXPECT_TRUE(WriteM3u({Entry(u"ü"_s)}, length, true).contains("- ü\r\n"));
}

TEST(M3uWriter, LengthsStayInSixteenBits) {
    QList<PlaylistEntry> entries = EntriesOf("abc");
    entries[1].duration = u"0"_s;
    const auto length = [](const QString& path) { return path.endsWith(u'c') ? 99999.0 : 0.0; };
    const QByteArray bytes = WriteM3u(entries, length, false);
    for (const char* line : {"#EXTINF:60,A-a", "#EXTINF:-1,A-b", "#EXTINF:32767,A-c"})
        EXPECT_TRUE(bytes.contains(line)) << line;
    const auto stopped = [](const QString&) { return std::nullopt; };
    EXPECT_TRUE(WriteM3u(entries, stopped, false).isEmpty());
}

} // namespace
} // namespace kalvo::test
