#include "tags/TagChange.h"

#include "tags/OggFields.h"
#include "tags/TagText.h"

#include <attachedpictureframe.h>
#include <commentsframe.h>
#include <flacpicture.h>
#include <id3v2tag.h>
#include <textidentificationframe.h>
#include <unsynchronizedlyricsframe.h>
#include <xiphcomment.h>

#include <memory>
#include <utility>

namespace kalvo {

namespace {

using TagText::FromTag;
using TagText::ToTag;

constexpr quint32 kComment = FrameId("COMM");
constexpr quint32 kLyric = FrameId("USLT");
constexpr quint32 kPicture = FrameId("APIC");

TagLib::ByteVector Bytes(const QByteArray& bytes) {
    return {bytes.constData(), static_cast<unsigned>(bytes.size())};
}

/** TagLib works on the names of version 2.4 and writes those of 2.3 by itself. */
TagLib::ByteVector IdOf(quint32 frame) {
    return TagLib::ByteVector::fromUInt(frame == FrameId("TYER") ? FrameId("TDRC") : frame);
}

/** 8-bit texts only where every reader agrees on them. */
TagLib::String::Type EncodingOf(const QString& text) {
    for (const QChar character : text) {
        if (character.unicode() > 0x7E)
            return TagLib::String::UTF16;
    }
    return TagLib::String::Latin1;
}

TagLib::ByteVector LanguageOf(const TagComment& comment) {
    const QByteArray letters = comment.language.toLatin1();
    return letters.size() == 3 ? Bytes(letters) : TagLib::ByteVector("XXX", 3);
}

void SetText(TagLib::ID3v2::Tag& tag, const TagChange& change) {
    const QString& text = change.comment.text;
    tag.removeFrames(IdOf(change.frame));
    if (text.isEmpty())
        return;
    auto frame = std::make_unique<TagLib::ID3v2::TextIdentificationFrame>(IdOf(change.frame), EncodingOf(text));
    frame->setText(ToTag(text));
    tag.addFrame(frame.release());
}

template<typename Frame>
void AddTold(TagLib::ID3v2::Tag& tag, const TagComment& comment) {
    const bool wide = EncodingOf(comment.text + comment.description) == TagLib::String::UTF16;
    auto frame = std::make_unique<Frame>(wide ? TagLib::String::UTF16 : TagLib::String::Latin1);
    frame->setLanguage(LanguageOf(comment));
    frame->setDescription(ToTag(comment.description));
    frame->setText(ToTag(comment.text));
    tag.addFrame(frame.release());
}

/** Plain comments may stand in several languages: only the first, which is the one that is shown, is replaced. */
void AddComment(TagLib::ID3v2::Tag& tag, const TagComment& comment) {
    const TagLib::ID3v2::FrameList old = tag.frameList("COMM"); // a copy: frames are taken out meanwhile
    for (TagLib::ID3v2::Frame* frame : old) {
        const auto* told = dynamic_cast<TagLib::ID3v2::CommentsFrame*>(frame);
        if (told == nullptr || FromTag(told->description()) != comment.description)
            continue;
        tag.removeFrame(frame);
        if (comment.description.isEmpty())
            break;
    }
    if (!comment.text.isEmpty())
        AddTold<TagLib::ID3v2::CommentsFrame>(tag, comment);
}

void AddPicture(TagLib::ID3v2::Tag& tag, const TagPicture& picture) {
    auto frame = std::make_unique<TagLib::ID3v2::AttachedPictureFrame>();
    frame->setTextEncoding(EncodingOf(picture.description));
    frame->setMimeType(ToTag(picture.mime));
    frame->setDescription(ToTag(picture.description));
    frame->setType(static_cast<TagLib::ID3v2::AttachedPictureFrame::Type>(picture.type));
    frame->setPicture(Bytes(picture.bytes));
    tag.addFrame(frame.release());
}

/** Writes into the field that holds the text so far, else into the first of its names. */
void SetField(TagLib::Ogg::XiphComment& comments, const QStringList& names, const QString& text) {
    QString used = names.value(0);
    for (const QString& name : names) {
        if (comments.contains(ToTag(name))) {
            used = name;
            break;
        }
    }
    if (used.isEmpty())
        return;
    for (const QString& name : names)
        comments.removeFields(ToTag(name));
    if (!text.isEmpty())
        comments.addField(ToTag(used), ToTag(text), true);
}

void AddPicture(TagLib::Ogg::XiphComment& comments, const TagPicture& picture) {
    auto block = std::make_unique<TagLib::FLAC::Picture>();
    block->setMimeType(ToTag(picture.mime));
    block->setDescription(ToTag(picture.description));
    block->setType(static_cast<TagLib::FLAC::Picture::Type>(picture.type));
    block->setData(Bytes(picture.bytes));
    comments.addPicture(block.release());
}

void DeleteFields(TagLib::Ogg::XiphComment& comments, quint32 frame) {
    if (frame == kPicture)
        comments.removeAllPictures();
    else
        SetField(comments, OggFields::Names(frame), {});
}

} // namespace

void Apply(const TagChange& change, TagData& data) {
    const TagComment& comment = change.comment;
    switch (change.kind) {
    case TagChange::Kind::SetText:
        data.texts.insert(change.frame, comment.text);
        return;
    case TagChange::Kind::AddComment: {
        const QList<TagComment> old = std::exchange(data.comments, {});
        bool replaced = false;
        for (const TagComment& known : old) {
            const bool same = known.description == comment.description;
            if (same && (!replaced || !comment.description.isEmpty()))
                replaced = true;
            else
                data.comments.append(known);
        }
        if (!comment.text.isEmpty())
            data.comments.append(comment);
        return;
    }
    case TagChange::Kind::AddLyric:
        data.lyrics.append(comment);
        return;
    case TagChange::Kind::AddPicture:
        data.pictures.append(change.picture);
        return;
    case TagChange::Kind::DeleteFrames:
        if (change.frame == kPicture)
            data.pictures.clear();
        else if (change.frame == kLyric)
            data.lyrics.clear();
        else if (change.frame == kComment)
            data.comments.clear();
        else
            data.texts.remove(change.frame);
        return;
    }
}

void Apply(const TagChange& change, TagLib::ID3v2::Tag& tag) {
    switch (change.kind) {
    case TagChange::Kind::SetText:
        return SetText(tag, change);
    case TagChange::Kind::AddComment:
        return AddComment(tag, change.comment);
    case TagChange::Kind::AddLyric:
        return AddTold<TagLib::ID3v2::UnsynchronizedLyricsFrame>(tag, change.comment);
    case TagChange::Kind::AddPicture:
        return AddPicture(tag, change.picture);
    case TagChange::Kind::DeleteFrames:
        return tag.removeFrames(IdOf(change.frame));
    }
}

void Apply(const TagChange& change, TagLib::Ogg::XiphComment& comments) {
    const bool rating = change.comment.description == kRatingDescription;
    switch (change.kind) {
    case TagChange::Kind::SetText:
        return SetField(comments, OggFields::Names(change.frame), change.comment.text);
    case TagChange::Kind::AddComment:
        return SetField(comments, rating ? OggFields::RatingNames() : OggFields::Names(kComment), change.comment.text);
    case TagChange::Kind::AddLyric:
        return SetField(comments, OggFields::Names(kLyric), change.comment.text);
    case TagChange::Kind::AddPicture:
        return AddPicture(comments, change.picture);
    case TagChange::Kind::DeleteFrames:
        return DeleteFields(comments, change.frame);
    }
}

} // namespace kalvo
