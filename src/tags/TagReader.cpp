#include "tags/TagReader.h"

#include "tags/GuardedStream.h"
#include "tags/OggFields.h"
#include "tags/SoundLength.h"
#include "tags/TagText.h"

#include <QFileInfo>

#include <attachedpictureframe.h>
#include <commentsframe.h>
#include <id3v2header.h>
#include <id3v2tag.h>
#include <mpegfile.h>
#include <taglib/opusfile.h>
#include <taglib/vorbisfile.h>
#include <textidentificationframe.h>
#include <unsynchronizedlyricsframe.h>

namespace kalvo {

namespace {

using TagText::FromTag;
using namespace Qt::StringLiterals;

constexpr auto kAccuracy = TagLib::AudioProperties::Average;

QString Joined(const TagLib::StringList& texts, bool asGenres) {
    QStringList result;
    for (const TagLib::String& text : texts) {
        const QString part = asGenres ? TagText::GenreName(FromTag(text)) : FromTag(text);
        if (!part.isEmpty() && !result.contains(part))
            result.append(part);
    }
    return result.join(u" / "_s);
}

QByteArray Copied(const TagLib::ByteVector& bytes) {
    return {bytes.data(), static_cast<qsizetype>(bytes.size())};
}

void TakeProperties(TagData& data, const TagLib::AudioProperties& properties) {
    data.duration = properties.lengthInMilliseconds() / 1000.0;
    data.bitrate = properties.bitrate();
    data.sampleRate = properties.sampleRate();
    data.channels = properties.channels();
    data.channelMode = data.channels == 1 ? u"Mono"_s : data.channels == 2 ? u"Stereo"_s : u"Mehrkanal"_s;
}

QString VersionText(const TagLib::MPEG::Properties& properties) {
    static const QStringList layers{{}, u"I"_s, u"II"_s, u"III"_s};
    static const QStringList versions{u"1"_s, u"2"_s, u"2.5"_s};
    return u"MPEG %1 Layer %2"_s.arg(versions.value(properties.version()), layers.value(properties.layer()));
}

QString ModeText(TagLib::MPEG::Header::ChannelMode mode) {
    static const QStringList modes{u"Stereo"_s, u"Joint Stereo"_s, u"Dual Channel"_s, u"Mono"_s};
    return modes.value(mode);
}

void ReadFrame(TagData& data, const TagLib::ID3v2::Frame* frame) {
    using namespace TagLib::ID3v2;
    if (const auto* user = dynamic_cast<const UserTextIdentificationFrame*>(frame)) {
        const TagLib::StringList fields = user->fieldList();
        data.userTexts.append(fields.size() > 1 ? FromTag(fields[1]) : QString());
    } else if (const auto* text = dynamic_cast<const TextIdentificationFrame*>(frame)) {
        const quint32 id = text->frameID().toUInt(true);
        if (!data.texts.contains(id))
            data.texts.insert(id, Joined(text->fieldList(), id == FrameId("TCON")));
    } else if (const auto* comment = dynamic_cast<const CommentsFrame*>(frame)) {
        data.comments.append({QString::fromLatin1(Copied(comment->language())), FromTag(comment->description()),
                              FromTag(comment->text())});
    } else if (const auto* lyric = dynamic_cast<const UnsynchronizedLyricsFrame*>(frame)) {
        data.lyrics.append(
            {QString::fromLatin1(Copied(lyric->language())), FromTag(lyric->description()), FromTag(lyric->text())});
    } else if (const auto* picture = dynamic_cast<const AttachedPictureFrame*>(frame)) {
        data.pictures.append({Copied(picture->picture()), FromTag(picture->mimeType()), FromTag(picture->description()),
                              static_cast<int>(picture->type())});
    }
}

void ReadId3v2(TagData& data, const TagLib::ID3v2::Tag& tag) {
    const TagLib::ID3v2::Header* header = tag.header();
    data.id3v2Version = u"2.%1"_s.arg(header->majorVersion());
    for (const TagLib::ID3v2::Frame* frame : tag.frameList())
        ReadFrame(data, frame);
    if (!data.texts.contains(FrameId("TYER")))
        data.texts.insert(FrameId("TYER"), data.texts.value(FrameId("TDRC")).left(4));
}

void ReadMpeg(TagData& data, GuardedStream& stream, const QString& path) {
    TagLib::MPEG::File file(&stream, TagLib::ID3v2::FrameFactory::instance(), true, kAccuracy);
    const TagLib::MPEG::Properties* properties = file.audioProperties();
    if (!file.isValid() || properties == nullptr)
        return;
    TakeProperties(data, *properties);
    data.version = VersionText(*properties);
    data.channelMode = ModeText(properties->channelMode());
    data.duration = SoundLength::OfMpeg(file, path);
    if (data.sampleRate <= 0 || !(data.duration > 0))
        return;
    data.format = AudioFormat::Mpeg;
    file.seek(-Id3v1Block::kSize, TagLib::File::End);
    data.id3v1 = Id3v1Block(Copied(file.readBlock(Id3v1Block::kSize)));
    if (file.hasID3v2Tag())
        ReadId3v2(data, *file.ID3v2Tag());
}

void ReadComments(TagData& data, TagLib::Ogg::XiphComment& comments) {
    const TagLib::Ogg::FieldListMap& fields = comments.fieldListMap();
    const auto texts = [&fields](const QStringList& names, bool asGenres = false) {
        for (const QString& name : names) {
            if (const auto found = fields.find(TagText::ToTag(name)); found != fields.end())
                return Joined(found->second, asGenres);
        }
        return QString();
    };
    for (const quint32 frame : OggFields::TextFrames())
        data.texts.insert(frame, texts(OggFields::Names(frame), frame == FrameId("TCON")));
    QString& year = data.texts[FrameId("TYER")];
    year = year.left(4);
    const auto add = [](QList<TagComment>& list, const QString& description, const QString& text) {
        if (!text.isEmpty())
            list.append({{}, description, text});
    };
    for (const QString& name : OggFields::Names(FrameId("COMM")))
        add(data.comments, {}, texts({name}));
    add(data.comments, kRatingDescription, texts(OggFields::RatingNames()));
    add(data.lyrics, {}, texts(OggFields::Names(FrameId("USLT"))));
    for (TagLib::FLAC::Picture* picture : comments.pictureList()) {
        data.pictures.append({Copied(picture->data()), FromTag(picture->mimeType()), FromTag(picture->description()),
                              static_cast<int>(picture->type())});
    }
}

template<typename OggFile>
void ReadOgg(TagData& data, GuardedStream& stream, const QString& path, AudioFormat format) {
    OggFile file(&stream, true, kAccuracy);
    if (!file.isValid() || file.audioProperties() == nullptr || file.tag() == nullptr)
        return;
    TakeProperties(data, *file.audioProperties());
    data.duration = SoundLength::OfOgg(file, data.duration, path);
    if (!(data.duration > 0))
        return;
    data.format = format;
    data.version = format == AudioFormat::OggOpus ? u"Ogg Opus"_s : u"Ogg Vorbis"_s;
    ReadComments(data, *file.tag());
}

} // namespace

TagData ReadTags(const QString& path) {
    TagText::UseAnsiTexts();
    TagData data;
    if (!QFileInfo(path).isFile()) // not a pipe, which would make opening wait
        return data;
    GuardedStream stream(path);
    if (!stream.isOpen())
        return data;
    const TagLib::ByteVector start = stream.readBlock(64);
    stream.seek(0);
    data.fileSize = stream.length();
    if (!start.startsWith("OggS"))
        ReadMpeg(data, stream, path);
    else if (start.find("OpusHead") >= 0)
        ReadOgg<TagLib::Ogg::Opus::File>(data, stream, path, AudioFormat::OggOpus);
    else
        ReadOgg<TagLib::Ogg::Vorbis::File>(data, stream, path, AudioFormat::OggVorbis);
    if (data.format == AudioFormat::Unknown)
        data = {};
    data.damaged = stream.HasHidden();
    return data;
}

} // namespace kalvo
