#include "tags/TagForm.h"

#include "base/PlayTime.h"
#include "tags/TitleFields.h"
#include "tags/clsAudioGenie.h"

#include <algorithm>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

/** What TENC is set to on every save. */
const QString kEncodedBy = QStringLiteral(KALVO_WEB_ADDRESS);

/** The frames behind the plain text fields. */
struct FrameField {
    TagField field;
    quint32 frame;
};
constexpr std::array<FrameField, 8> kFrames{{{TagField::Title, FrameId("TIT2")},
                                             {TagField::Artist, FrameId("TPE1")},
                                             {TagField::Album, FrameId("TALB")},
                                             {TagField::Year, FrameId("TYER")},
                                             {TagField::Genre, FrameId("TCON")},
                                             {TagField::Track, FrameId("TRCK")},
                                             {TagField::Bpm, FrameId("TBPM")},
                                             {TagField::Composer, FrameId("TCOM")}}};

struct Id3v1Field {
    TagField field;
    QString (clsAudioGenie::*get)() const;
    void (clsAudioGenie::*set)(const QString&);
};
constexpr std::array<Id3v1Field, 7> kId3v1{
    {{TagField::V1Title, &clsAudioGenie::ID3V1GetTitleW, &clsAudioGenie::ID3V1SetTitleW},
     {TagField::V1Artist, &clsAudioGenie::ID3V1GetArtistW, &clsAudioGenie::ID3V1SetArtistW},
     {TagField::V1Album, &clsAudioGenie::ID3V1GetAlbumW, &clsAudioGenie::ID3V1SetAlbumW},
     {TagField::V1Year, &clsAudioGenie::ID3V1GetYearW, &clsAudioGenie::ID3V1SetYearW},
     {TagField::V1Genre, &clsAudioGenie::ID3V1GetGenreW, &clsAudioGenie::ID3V1SetGenreW},
     {TagField::V1Track, &clsAudioGenie::ID3V1GetTrackW, &clsAudioGenie::ID3V1SetTrackW},
     {TagField::V1Comment, &clsAudioGenie::ID3V1GetCommentW, &clsAudioGenie::ID3V1SetCommentW}}};

QString& TextIn(TagForm& form, TagField field) {
    return form.texts[static_cast<std::size_t>(field)];
}

bool IsEditable(const QString& path) {
    const QString ending = path.right(4).toLower();
    return ending == u".mp3" || ending == u".ogg";
}

QString TechnicalLine(const clsAudioGenie& tags) {
    QStringList parts{tags.AUDIOGetVersionW()};
    if (!tags.ID3V1GetVersionW().isEmpty())
        parts += u"ID3v"_s + tags.ID3V1GetVersionW();
    if (!tags.ID3V2GetVersionW().isEmpty())
        parts += u"ID3v"_s + tags.ID3V2GetVersionW();
    parts += u"%1 kbit/s"_s.arg(tags.AUDIOGetBitrateW());
    parts += u"%1 Hz"_s.arg(tags.AUDIOGetSampleRateW());
    parts += u"%1 (%2 Kanäle)"_s.arg(tags.AUDIOGetChannelModeW()).arg(tags.AUDIOGetChannelsW());
    parts += PlayTime::Format(tags.AUDIOGetDurationW());
    parts += u"%1 MB"_s.arg(QString::number(static_cast<double>(tags.AUDIOGetFileSizeW()) / 1e6, 'f', 1));
    return parts.join(u"  ·  "_s);
}

void SetText(clsAudioGenie& tags, TagField field, const QString& text) {
    for (const FrameField& known : kFrames) {
        if (known.field == field)
            return tags.ID3V2SetTextFrameW(known.frame, text);
    }
    if (field == TagField::Comment)
        tags.ID3V2AddCommentW(u"ENG"_s, {}, text);
    if (field == TagField::Rating)
        tags.ID3V2AddCommentW(u"ENG"_s, kRatingDescription, text);
    if (field == TagField::Lyric) {
        tags.ID3V2DeleteAllFramesW(FrameId("USLT"));
        if (!text.isEmpty())
            tags.ID3V2AddLyricW(u"ENG"_s, u"Kalvo_Lyrics"_s, text);
    }
}

void SetAll(clsAudioGenie& tags, const TagEdit& edit, bool hasId3v1) {
    bool id3v1 = false;
    for (const Id3v1Field& known : kId3v1) {
        const auto& text = edit.texts[static_cast<std::size_t>(known.field)];
        if (!text || !hasId3v1)
            continue;
        (tags.*known.set)(*text);
        id3v1 = true;
    }
    bool id3v2 = edit.pictures.has_value();
    for (std::size_t i = static_cast<std::size_t>(TagField::Title); i < kTagFields; ++i) {
        if (edit.texts[i])
            SetText(tags, static_cast<TagField>(i), *edit.texts[i]);
        id3v2 = id3v2 || edit.texts[i].has_value();
    }
    if (edit.pictures) {
        tags.ID3V2DeleteAllFramesW(FrameId("APIC"));
        for (const TagPicture& picture : *edit.pictures)
            tags.ID3V2AddPictureW(picture);
    }
    if (id3v2 || (id3v1 && tags.IsId3v2Writable()))
        tags.ID3V2SetTextFrameW(FrameId("TENC"), kEncodedBy);
}

} // namespace

bool TagEdit::IsEmpty() const {
    return !pictures && std::none_of(texts.begin(), texts.end(), [](const auto& text) { return text.has_value(); });
}

TagForm ReadTagForm(clsAudioGenie& tags, const QString& path) {
    TagForm form;
    form.path = path;
    if (!IsEditable(path)) {
        form.reason = u"Nur MP3- und OGG-Dateien können bearbeitet werden."_s;
        return form;
    }
    form.format = tags.AUDIOAnalyzeFileW(path);
    form.reason = tags.AUDIOGetLastErrorTextW();
    if (form.format == AudioFormat::Unknown)
        return form;
    for (const Id3v1Field& known : kId3v1)
        TextIn(form, known.field) = (tags.*known.get)();
    for (const FrameField& known : kFrames)
        TextIn(form, known.field) = tags.ID3V2GetTextFrameW(known.frame);
    TextIn(form, TagField::Comment) = CommentOf(tags);
    TextIn(form, TagField::Rating) = RatingOf(tags);
    TextIn(form, TagField::Lyric) = tags.ID3V2GetLyricW(1);
    for (int index = 1; index <= tags.ID3V2GetFrameCountW(FrameId("APIC")); ++index) {
        form.pictures.append({tags.ID3V2GetPictureArrayW(index), tags.ID3V2GetPictureMimeW(index),
                              tags.ID3V2GetPictureDescriptionW(index), tags.ID3V2GetPictureTypeW(index)});
    }
    form.technical = TechnicalLine(tags);
    return form;
}

TagSaved WriteTagEdit(clsAudioGenie& tags, const QString& path, const TagEdit& edit) {
    TagSaved saved;
    saved.path = path;
    if (!IsEditable(path)) {
        saved.reason = u"Nur MP3- und OGG-Dateien können bearbeitet werden."_s;
        return saved;
    }
    saved.before = ReadTitleFields(tags, path);
    if (!saved.before) {
        saved.reason = tags.AUDIOGetLastErrorTextW();
        return saved;
    }
    SetAll(tags, edit, tags.ID3V1IsPossible());
    if (!tags.SaveChangesToFile())
        saved.reason = tags.AUDIOGetLastErrorTextW();
    else
        saved.after = ReadTitleFields(tags, path);
    return saved;
}

std::optional<QString> CommonText(const QList<TagForm>& forms, TagField field) {
    std::optional<QString> common;
    for (const TagForm& form : forms) {
        if (common && *common != form.Text(field))
            return std::nullopt;
        common = form.Text(field);
    }
    return common;
}

void FollowTags(TitleRecord& record, const TitleRecord& before, const TitleRecord& after) {
    for (QString TitleRecord::*field :
         {&TitleRecord::Titel, &TitleRecord::Interpret, &TitleRecord::Album, &TitleRecord::Bewertung,
          &TitleRecord::Stil, &TitleRecord::Jahr, &TitleRecord::Extra1, &TitleRecord::Extra3, &TitleRecord::Extra4}) {
        if (before.*field != after.*field)
            record.*field = after.*field;
    }
}

} // namespace kalvo
