#include "tags/TitleFields.h"

#include "base/PlayTime.h"
#include "tags/clsAudioGenie.h"

namespace kalvo {

QString RatingOf(const clsAudioGenie& tags) {
    QString rating;
    for (int index = 1; index <= tags.ID3V2GetFrameCountW(FrameId("COMM")); ++index) {
        if (tags.ID3V2GetCommentDescriptionW(index) == kRatingDescription) {
            rating = tags.ID3V2GetCommentW(index);
        }
    }
    return rating;
}

QString CommentOf(const clsAudioGenie& tags) {
    QString described;
    for (int index = 1; index <= tags.ID3V2GetFrameCountW(FrameId("COMM")); ++index) {
        const QString description = tags.ID3V2GetCommentDescriptionW(index);
        QString text = tags.ID3V2GetCommentW(index);
        if (description.isEmpty() && !text.isEmpty()) {
            return text;
        }
        if (description != kRatingDescription && !description.startsWith(QStringLiteral("iTun")) &&
            described.isEmpty()) {
            described = text;
        }
    }
    return described;
}

namespace {

const QString& NotEmpty(const QString& id3v2, const QString& id3v1) {
    return id3v2.isEmpty() ? id3v1 : id3v2;
}

} // namespace

QString ChooseByLength(const QString& id3v1, const QString& id3v2) {
    return id3v2.size() < id3v1.size() ? id3v1 : id3v2;
}

std::optional<TitleRecord> ReadTitleFields(clsAudioGenie& tags, const QString& path) {
    if (tags.AUDIOAnalyzeFileW(path) == AudioFormat::Unknown) {
        return std::nullopt;
    }
    const auto frame = [&tags](quint32 id) { return tags.ID3V2GetTextFrameW(id); };
    TitleRecord record;
    record.Titel = ChooseByLength(tags.ID3V1GetTitleW(), frame(FrameId("TIT2")));
    record.Interpret = ChooseByLength(tags.ID3V1GetArtistW(), frame(FrameId("TPE1")).trimmed());
    record.Album = ChooseByLength(tags.ID3V1GetAlbumW(), frame(FrameId("TALB")));
    record.Stil = ChooseByLength(tags.ID3V1GetGenreW(), tags.ID3V2GetGenreW());
    record.Jahr = ChooseByLength(tags.ID3V1GetYearW(), frame(FrameId("TYER")));
    record.Bewertung = RatingOf(tags);
    record.Zeit = PlayTime::Format(tags.AUDIOGetDurationW());
    record.Pfad = path;
    record.Extra1 = NotEmpty(CommentOf(tags), tags.ID3V1GetCommentW());
    record.Extra3 = NotEmpty(frame(FrameId("TRCK")), tags.ID3V1GetTrackW());
    record.Extra4 = frame(FrameId("TBPM"));
    return record;
}

} // namespace kalvo
