#include "tags/clsAudioGenie.h"

#include "audio/OpenDecoder.h"
#include "audio/ReadAheadFile.h"
#include "tags/TagText.h"

#include <QFile>
#include <QHash>
#include <QList>

#include <attachedpictureframe.h>
#include <commentsframe.h>
#include <id3v1tag.h>
#include <id3v2tag.h>
#include <mpegfile.h>
#include <taglib/opusfile.h>
#include <taglib/vorbisfile.h>
#include <textidentificationframe.h>
#include <tfilestream.h>
#include <xingheader.h>

#include <algorithm>
#include <array>

namespace kalvo {

namespace {

using TagText::FromTag;

struct Comment {
    QString description;
    QString text;
};

struct Picture {
    QByteArray bytes;
    QString mime;
};

/** Ogg comments and the frames that they are read as. */
struct OggField {
    quint32 frame;
    const char* name;
};
constexpr std::array<OggField, 7> kOggFields{{{FrameId("TIT2"), "TITLE"},
                                              {FrameId("TPE1"), "ARTIST"},
                                              {FrameId("TALB"), "ALBUM"},
                                              {FrameId("TYER"), "DATE"},
                                              {FrameId("TRCK"), "TRACKNUMBER"},
                                              {FrameId("TBPM"), "BPM"},
                                              {FrameId("TCON"), "GENRE"}}};
const QString kRating = QStringLiteral("MusicMatch_Preference");

QString Joined(const TagLib::StringList& texts, bool asGenres) {
    QStringList result;
    for (const TagLib::String& text : texts) {
        const QString part = asGenres ? TagText::GenreName(FromTag(text)) : FromTag(text);
        if (!part.isEmpty() && !result.contains(part)) {
            result.append(part);
        }
    }
    return result.join(QStringLiteral(" / "));
}

/** Frames counted by decoding's own scan: for streams whose header tells no length. */
double ScannedSeconds(const QString& path) {
    audio::ReadAheadFile file(audio::MakeFileSource(QFile::encodeName(path).toStdString()));
    if (!file.WaitUntilOpen()) {
        return 0;
    }
    const std::unique_ptr<audio::Decoder> decoder = audio::OpenDecoder(file);
    if (decoder == nullptr || decoder->Format().sampleRate <= 0) {
        return 0;
    }
    return static_cast<double>(decoder->Format().frames) / decoder->Format().sampleRate;
}

} // namespace

/** What was read of the current file. */
struct clsAudioGenie::File {
    AudioFormat format = AudioFormat::Unknown;
    double duration = 0;
    int bitrate = 0;
    int sampleRate = 0;
    int channels = 0;
    QString id3v1Title, id3v1Artist, id3v1Album, id3v1Year, id3v1Genre, id3v1Track, id3v1Comment;
    QHash<quint32, QString> texts;
    QList<Comment> comments;
    QStringList userTexts;
    QList<Picture> pictures;

    void Read(const QString& path);
    void ReadMpeg(TagLib::MPEG::File& file, const QString& path);
    void ReadId3v1(const TagLib::ID3v1::Tag& tag);
    void ReadId3v2(const TagLib::ID3v2::Tag& tag);
    void ReadOgg(const TagLib::Ogg::XiphComment* comments);
    void TakeProperties(const TagLib::AudioProperties* properties);
};

void clsAudioGenie::File::TakeProperties(const TagLib::AudioProperties* properties) {
    if (properties != nullptr) {
        duration = properties->lengthInMilliseconds() / 1000.0;
        bitrate = properties->bitrate();
        sampleRate = properties->sampleRate();
        channels = properties->channels();
    }
}

void clsAudioGenie::File::Read(const QString& path) {
    TagLib::FileStream stream(QFile::encodeName(path).constData(), true);
    if (!stream.isOpen()) {
        return;
    }
    constexpr auto kAccuracy = TagLib::AudioProperties::Average;
    stream.seek(0);
    const TagLib::ByteVector start = stream.readBlock(64);
    stream.seek(0);
    if (!start.startsWith("OggS")) {
        TagLib::MPEG::File file(&stream, TagLib::ID3v2::FrameFactory::instance(), true, kAccuracy);
        if (file.isValid()) {
            ReadMpeg(file, path);
        }
    } else if (start.find("OpusHead") >= 0) {
        TagLib::Ogg::Opus::File file(&stream, true, kAccuracy);
        if (file.isValid()) {
            format = AudioFormat::OggOpus;
            TakeProperties(file.audioProperties());
            ReadOgg(file.tag());
        }
    } else {
        TagLib::Ogg::Vorbis::File file(&stream, true, kAccuracy);
        if (file.isValid()) {
            format = AudioFormat::OggVorbis;
            TakeProperties(file.audioProperties());
            ReadOgg(file.tag());
        }
    }
}

void clsAudioGenie::File::ReadMpeg(TagLib::MPEG::File& file, const QString& path) {
    const TagLib::MPEG::Properties* properties = file.audioProperties();
    TakeProperties(properties);
    if (properties == nullptr || properties->xingHeader() == nullptr) {
        duration = ScannedSeconds(path);
    }
    format = sampleRate > 0 && duration > 0 ? AudioFormat::Mpeg : AudioFormat::Unknown;
    if (file.hasID3v1Tag()) {
        ReadId3v1(*file.ID3v1Tag());
    }
    if (file.hasID3v2Tag()) {
        ReadId3v2(*file.ID3v2Tag());
    }
}

void clsAudioGenie::File::ReadId3v1(const TagLib::ID3v1::Tag& tag) {
    id3v1Title = FromTag(tag.title());
    id3v1Artist = FromTag(tag.artist());
    id3v1Album = FromTag(tag.album());
    id3v1Year = tag.year() > 0 ? QString::number(tag.year()) : QString();
    id3v1Genre = FromTag(tag.genre());
    id3v1Track = tag.track() > 0 ? QString::number(tag.track()) : QString();
    id3v1Comment = FromTag(tag.comment());
}

void clsAudioGenie::File::ReadId3v2(const TagLib::ID3v2::Tag& tag) {
    for (const TagLib::ID3v2::Frame* frame : tag.frameList()) {
        if (const auto* user = dynamic_cast<const TagLib::ID3v2::UserTextIdentificationFrame*>(frame)) {
            const TagLib::StringList fields = user->fieldList();
            userTexts.append(fields.size() > 1 ? FromTag(fields[1]) : QString());
        } else if (const auto* text = dynamic_cast<const TagLib::ID3v2::TextIdentificationFrame*>(frame)) {
            const quint32 id = text->frameID().toUInt(true);
            const bool isGenre = id == FrameId("TCON");
            if (!texts.contains(id)) {
                texts.insert(id, Joined(text->fieldList(), isGenre));
            }
        } else if (const auto* comment = dynamic_cast<const TagLib::ID3v2::CommentsFrame*>(frame)) {
            comments.append({FromTag(comment->description()), FromTag(comment->text())});
        } else if (const auto* picture = dynamic_cast<const TagLib::ID3v2::AttachedPictureFrame*>(frame)) {
            const TagLib::ByteVector bytes = picture->picture();
            pictures.append(
                {QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())), FromTag(picture->mimeType())});
        }
    }
    if (!texts.contains(FrameId("TYER"))) {
        texts.insert(FrameId("TYER"), texts.value(FrameId("TDRC")).left(4));
    }
}

void clsAudioGenie::File::ReadOgg(const TagLib::Ogg::XiphComment* tag) {
    if (tag == nullptr) {
        return;
    }
    const TagLib::Ogg::FieldListMap& fields = tag->fieldListMap();
    for (const OggField& field : kOggFields) {
        if (fields.contains(field.name)) {
            texts.insert(field.frame, Joined(fields[field.name], field.frame == FrameId("TCON")));
        }
    }
    QString& year = texts[FrameId("TYER")];
    year = year.left(4);
    for (const char* name : {"COMMENT", "DESCRIPTION"}) {
        if (fields.contains(name)) {
            comments.append({QString(), Joined(fields[name], false)});
        }
    }
    if (fields.contains("RATING")) {
        comments.append({kRating, Joined(fields["RATING"], false)});
    }
    for (TagLib::FLAC::Picture* picture : const_cast<TagLib::Ogg::XiphComment*>(tag)->pictureList()) {
        const TagLib::ByteVector bytes = picture->data();
        pictures.append({QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())), FromTag(picture->mimeType())});
    }
}

clsAudioGenie::clsAudioGenie() : file_(std::make_unique<File>()) {
    TagText::UseAnsiTexts();
}

clsAudioGenie::~clsAudioGenie() = default;

AudioFormat clsAudioGenie::AUDIOAnalyzeFileW(const QString& path) {
    *file_ = {};
    file_->Read(path);
    return file_->format;
}

double clsAudioGenie::AUDIOGetDurationW() const {
    return file_->duration;
}
int clsAudioGenie::AUDIOGetBitrateW() const {
    return file_->bitrate;
}
int clsAudioGenie::AUDIOGetSampleRateW() const {
    return file_->sampleRate;
}
int clsAudioGenie::AUDIOGetChannelsW() const {
    return file_->channels;
}

QString clsAudioGenie::ID3V1GetTitleW() const {
    return file_->id3v1Title;
}
QString clsAudioGenie::ID3V1GetArtistW() const {
    return file_->id3v1Artist;
}
QString clsAudioGenie::ID3V1GetAlbumW() const {
    return file_->id3v1Album;
}
QString clsAudioGenie::ID3V1GetYearW() const {
    return file_->id3v1Year;
}
QString clsAudioGenie::ID3V1GetGenreW() const {
    return file_->id3v1Genre;
}
QString clsAudioGenie::ID3V1GetTrackW() const {
    return file_->id3v1Track;
}
QString clsAudioGenie::ID3V1GetCommentW() const {
    return file_->id3v1Comment;
}

QString clsAudioGenie::ID3V2GetTextFrameW(quint32 frame) const {
    return file_->texts.value(frame);
}

QString clsAudioGenie::ID3V2GetGenreW() const {
    return file_->texts.value(FrameId("TCON"));
}

int clsAudioGenie::ID3V2GetFrameCountW(quint32 frame) const {
    switch (frame) {
    case FrameId("COMM"):
        return static_cast<int>(file_->comments.size());
    case FrameId("TXXX"):
        return static_cast<int>(file_->userTexts.size());
    case FrameId("APIC"):
        return static_cast<int>(file_->pictures.size());
    default:
        return file_->texts.value(frame).isEmpty() ? 0 : 1;
    }
}

QString clsAudioGenie::ID3V2GetCommentDescriptionW(int index) const {
    return file_->comments.value(index - 1).description;
}

QString clsAudioGenie::ID3V2GetCommentW(int index) const {
    return file_->comments.value(index - 1).text;
}
QString clsAudioGenie::ID3V2GetUserTextW(int index) const {
    return file_->userTexts.value(index - 1);
}
QByteArray clsAudioGenie::ID3V2GetPictureArrayW(int index) const {
    return file_->pictures.value(index - 1).bytes;
}

int clsAudioGenie::ID3V2GetPictureSizeW(int index) const {
    return static_cast<int>(file_->pictures.value(index - 1).bytes.size());
}

QString clsAudioGenie::ID3V2GetPictureMimeW(int index) const {
    return file_->pictures.value(index - 1).mime;
}

} // namespace kalvo
