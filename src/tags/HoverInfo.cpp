#include "tags/HoverInfo.h"

#include "tags/TitleFields.h"
#include "tags/clsAudioGenie.h"

namespace kalvo {

namespace {

const QString kLineEnd = QStringLiteral("\r\n");

} // namespace

HoverInfo ReadHoverInfo(clsAudioGenie& tags, const QString& path) {
    const AudioFormat format = tags.AUDIOAnalyzeFileW(path);
    const bool id3v1 = format == AudioFormat::Mpeg;
    return {tags.ID3V2GetTextFrameW(FrameId("TALB")),
            tags.ID3V2GetTextFrameW(FrameId("TYER")),
            tags.ID3V2GetGenreW(),
            RatingOf(tags),
            id3v1 ? tags.ID3V1GetCommentW() : CommentOf(tags),
            tags.ID3V2GetLyricW(1)};
}

QString HoverText(const QString& artist, const QString& title, const HoverInfo& info) {
    return QStringList{artist + QStringLiteral(" - ") + title,
                       QString(),
                       QStringLiteral("Album:          ") + info.album,
                       QStringLiteral("Jahr:             ") + info.year,
                       QStringLiteral("Stil:               ") + info.genre,
                       QStringLiteral("Bewertung:  ") + info.rating,
                       QStringLiteral("Kommentar:  ") + info.comment}
        .join(kLineEnd);
}

QString LyricsText(const QString& artist, const QString& title, const HoverInfo& info) {
    const QString lyric = info.lyric.isEmpty() ? QStringLiteral("keine Lyrics vorhanden...") : info.lyric;
    return HoverText(artist, title, info) + kLineEnd + kLineEnd + lyric;
}

} // namespace kalvo
