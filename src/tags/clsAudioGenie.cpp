#include "tags/clsAudioGenie.h"

#include "tags/PictureFile.h"
#include "tags/TagReader.h"
#include "tags/TagText.h"
#include "tags/TagWriter.h"

namespace kalvo {

AudioFormat clsAudioGenie::AUDIOAnalyzeFileW(const QString& path) {
    path_ = path;
    data_ = ReadTags(path);
    changes_.clear();
    id3v1Changed_ = false;
    error_ =
        data_.format == AudioFormat::Unknown ? QStringLiteral("Die Datei enthält keinen lesbaren Ton.") : QString();
    return data_.format;
}

int clsAudioGenie::ID3V1GetGenresW() {
    return TagText::GenreCount();
}

QString clsAudioGenie::ID3V1GetGenreItemW(int index) {
    return TagText::GenreAt(index);
}

void clsAudioGenie::SetId3v1(Id3v1Block::Field field, const QString& text) {
    if (data_.id3v1.Text(field) == text)
        return;
    data_.id3v1.SetText(field, text);
    id3v1Changed_ = true;
}

void clsAudioGenie::Change(TagChange change) {
    Apply(change, data_);
    changes_.append(std::move(change));
}

void clsAudioGenie::ID3V2SetTextFrameW(quint32 frame, const QString& text) {
    Change({TagChange::Kind::SetText, frame, {{}, {}, text}});
}

int clsAudioGenie::ID3V2GetFrameCountW(quint32 frame) const {
    switch (frame) {
    case FrameId("COMM"):
        return static_cast<int>(data_.comments.size());
    case FrameId("USLT"):
        return static_cast<int>(data_.lyrics.size());
    case FrameId("TXXX"):
        return static_cast<int>(data_.userTexts.size());
    case FrameId("APIC"):
        return static_cast<int>(data_.pictures.size());
    default:
        return data_.texts.value(frame).isEmpty() ? 0 : 1;
    }
}

void clsAudioGenie::ID3V2AddCommentW(const QString& language, const QString& description, const QString& text) {
    Change({TagChange::Kind::AddComment, FrameId("COMM"), {language, description, text}});
}

void clsAudioGenie::ID3V2AddLyricW(const QString& language, const QString& description, const QString& text) {
    Change({TagChange::Kind::AddLyric, FrameId("USLT"), {language, description, text}});
}

void clsAudioGenie::ID3V2DeleteAllFramesW(quint32 frame) {
    Change({TagChange::Kind::DeleteFrames, frame});
}

bool clsAudioGenie::ID3V2AddPictureFileW(const QString& file, const QString& description, int type) {
    auto picture = ReadPictureFile(file);
    if (!picture) {
        error_ = QStringLiteral("Die Datei ist kein Bild, das eingebettet werden kann.");
        return false;
    }
    picture->description = description;
    picture->type = type;
    ID3V2AddPictureW(*picture);
    return true;
}

void clsAudioGenie::ID3V2AddPictureW(const TagPicture& picture) {
    Change({TagChange::Kind::AddPicture, FrameId("APIC"), {}, picture});
}

bool clsAudioGenie::Save(bool id3v1, bool id3v2) {
    const bool block = id3v1 && id3v1Changed_;
    const QList<TagChange> changes = id3v2 ? changes_ : QList<TagChange>();
    error_ = WriteTags(path_, data_, changes, block ? std::optional(data_.id3v1) : std::nullopt);
    if (!error_.isEmpty())
        return false;
    if (block)
        id3v1Changed_ = false;
    if (id3v2)
        changes_.clear();
    return true;
}

} // namespace kalvo
