#include "tags/TagWriter.h"

#include "tags/FileReplacement.h"
#include "tags/SoundContent.h"
#include "tags/TagText.h"

#include <QFile>

#include <id3v2header.h>
#include <id3v2tag.h>
#include <mpegfile.h>
#include <taglib/opusfile.h>
#include <taglib/vorbisfile.h>

#include <algorithm>

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

/** 2.3, which every program reads, unless the tag is a 2.4 one or holds what 2.3 cannot. */
TagLib::ID3v2::Version VersionFor(const TagLib::ID3v2::Tag& tag) {
    if (tag.header()->majorVersion() >= 4 && !tag.isEmpty())
        return TagLib::ID3v2::v4;
    for (const char* id : {"ASPI", "EQU2", "RVA2", "SEEK", "SIGN", "TDRL", "TDTG", "TMOO", "TPRO", "TSST"}) {
        if (!tag.frameList(id).isEmpty())
            return TagLib::ID3v2::v4;
    }
    return TagLib::ID3v2::v3;
}

bool WriteId3v2(const QByteArray& file, bool hadTag, const QList<TagChange>& changes) {
    TagLib::MPEG::File mpeg(file.constData(), false);
    if (!mpeg.isValid())
        return false;
    TagLib::ID3v2::Tag& tag = *mpeg.ID3v2Tag(true);
    const auto version = hadTag ? VersionFor(tag) : TagLib::ID3v2::v3;
    for (const TagChange& change : changes)
        Apply(change, tag);
    return mpeg.save(TagLib::MPEG::File::ID3v2, TagLib::MPEG::File::StripNone, version,
                     TagLib::MPEG::File::DoNotDuplicate);
}

template<typename OggFile>
bool WriteOgg(const QByteArray& file, const QList<TagChange>& changes) {
    OggFile ogg(file.constData(), false);
    if (!ogg.isValid() || ogg.tag() == nullptr)
        return false;
    for (const TagChange& change : changes)
        Apply(change, *ogg.tag());
    return ogg.save();
}

bool WriteId3v1(const QString& path, const Id3v1Block& block) {
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite) || !file.seek(std::max<qint64>(0, file.size() - Id3v1Block::kSize)))
        return false;
    const bool had = Id3v1Block(file.readAll()).IsPresent();
    return file.seek(file.size() - (had ? Id3v1Block::kSize : 0)) && file.write(block.Bytes()) == block.Bytes().size();
}

bool WriteChanges(const QString& path, const TagData& data, const QList<TagChange>& changes) {
    const QByteArray file = QFile::encodeName(path);
    switch (data.format) {
    case AudioFormat::Mpeg:
        return WriteId3v2(file, !data.id3v2Version.isEmpty(), changes);
    case AudioFormat::OggVorbis:
        return WriteOgg<TagLib::Ogg::Vorbis::File>(file, changes);
    case AudioFormat::OggOpus:
        return WriteOgg<TagLib::Ogg::Opus::File>(file, changes);
    case AudioFormat::Unknown:
        break;
    }
    return false;
}

} // namespace

QString WriteTags(const QString& path, const TagData& data, const QList<TagChange>& changes,
                  const std::optional<Id3v1Block>& id3v1) {
    if (data.format == AudioFormat::Unknown)
        return u"Die Datei enthält keinen lesbaren Ton."_s;
    if (data.damaged && !changes.isEmpty())
        return u"Das Tag ist beschädigt oder zu groß und wird deshalb nicht verändert."_s;
    if (id3v1 && data.format != AudioFormat::Mpeg)
        return u"Nur MP3-Dateien haben ein ID3v1-Tag."_s;
    if (changes.isEmpty() && !id3v1)
        return {};
    TagText::UseAnsiTexts();
    FileReplacement replacement(path);
    if (!replacement.Prepare())
        return replacement.Reason();
    const QString copy = replacement.CopyPath();
    const bool written =
        (changes.isEmpty() || WriteChanges(copy, data, changes)) && (!id3v1 || WriteId3v1(copy, *id3v1));
    const QByteArray content = SoundContent::Hash(path);
    if (!written || content.isEmpty() || SoundContent::Hash(copy) != content)
        return u"Das Tag konnte nicht geschrieben werden. Die Datei ist unverändert."_s;
    return replacement.Commit() ? QString() : replacement.Reason();
}

} // namespace kalvo
