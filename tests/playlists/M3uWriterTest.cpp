#include "playlists/M3uWriter.h"

#include "playlists/PlaylistSupport.h"

#include <gtest/gtest.h>

namespace kalvo {

TEST(M3uWriter, WritesTheGivenLines) {
    QList<PlaylistEntry> entries = test::EntriesOf("ab");
    entries[0].title = QStringLiteral("Männer\nund");
    const auto length = [](const QString& path) { return path.endsWith(u'a') ? 2.5 : 61.5; };
    EXPECT_EQ(WriteM3u(entries, length, false),
              QByteArray("#EXTM3U\r\n#EXTINF:2,A-a - M\xE4nner und\r\n/music/a\r\n#EXTINF:62,A-b - b\r\n/music/b\r\n"));
    entries[0].title = QStringLiteral("Ночь");
    EXPECT_TRUE(WriteM3u(entries, length, false).contains("#EXTINF:2,A-a - Ночь\r\n")) << "in UTF-8";
    EXPECT_TRUE(WriteM3u({test::Entry(QStringLiteral("ü"))}, length, true).contains("- ü\r\n"));
}

TEST(M3uWriter, LengthsStayInSixteenBits) {
    QList<PlaylistEntry> entries = test::EntriesOf("abc");
    entries[1].duration = QStringLiteral("0");
    const QByteArray bytes = WriteM3u(
        entries, [](const QString& path) { return path.endsWith(u'c') ? 99999.0 : 0.0; }, false);
    EXPECT_TRUE(bytes.contains("#EXTINF:60,A-a")) << "what the entry tells";
    EXPECT_TRUE(bytes.contains("#EXTINF:-1,A-b"));
    EXPECT_TRUE(bytes.contains("#EXTINF:32767,A-c"));
    EXPECT_TRUE(WriteM3u(
                    entries, [](const QString&) { return std::nullopt; }, false)
                    .isEmpty());
}

} // namespace kalvo
