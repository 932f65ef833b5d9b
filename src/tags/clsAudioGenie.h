#pragma once

#include "tags/TagChange.h"

#include <QByteArray>
#include <QString>

namespace kalvo {

/**
 * Tags and technical data of one current file: analyse a file, then read its fields, or change and save them. A read
 * after another analysis returns the other file's data; before the first, and of a file that cannot be read, texts are
 * empty and numbers 0. Ogg comments come through the same operations as the frames that they correspond to. A changed
 * field reads as changed at once; the file follows with SaveChangesToFile, and analysing drops what was not saved. An
 * object belongs to one thread; several objects may work beside each other.
 */
class clsAudioGenie {
public:
    /** Loads a file; the format is told by its content. */
    AudioFormat AUDIOAnalyzeFileW(const QString& path);
    /** Seconds, exact. */
    double AUDIOGetDurationW() const { return data_.duration; }
    /** kbit/s, the average. */
    int AUDIOGetBitrateW() const { return data_.bitrate; }
    /** Hz. */
    int AUDIOGetSampleRateW() const { return data_.sampleRate; }
    int AUDIOGetChannelsW() const { return data_.channels; }
    /** "Stereo", "Joint Stereo", "Dual Channel", "Mono", "Mehrkanal". */
    QString AUDIOGetChannelModeW() const { return data_.channelMode; }
    /** Bytes. */
    qint64 AUDIOGetFileSizeW() const { return data_.fileSize; }
    /** E.g. "MPEG 1 Layer III", "Ogg Vorbis". */
    QString AUDIOGetVersionW() const { return data_.version; }
    QString AUDIOGetComposerW() const { return ID3V2GetTextFrameW(FrameId("TCOM")); }
    /** Why the last analysis or saving failed, in German; empty after a success. */
    QString AUDIOGetLastErrorTextW() const { return error_; }

    QString ID3V1GetTitleW() const { return data_.id3v1.Text(Id3v1Block::Field::Title); }
    QString ID3V1GetArtistW() const { return data_.id3v1.Text(Id3v1Block::Field::Artist); }
    QString ID3V1GetAlbumW() const { return data_.id3v1.Text(Id3v1Block::Field::Album); }
    QString ID3V1GetYearW() const { return data_.id3v1.Text(Id3v1Block::Field::Year); }
    QString ID3V1GetGenreW() const { return data_.id3v1.Text(Id3v1Block::Field::Genre); }
    QString ID3V1GetTrackW() const { return data_.id3v1.Text(Id3v1Block::Field::Track); }
    QString ID3V1GetCommentW() const { return data_.id3v1.Text(Id3v1Block::Field::Comment); }
    /** Texts are cut to their 30, 28 or 4 characters; see Id3v1Block. */
    void ID3V1SetTitleW(const QString& text) { SetId3v1(Id3v1Block::Field::Title, text); }
    void ID3V1SetArtistW(const QString& text) { SetId3v1(Id3v1Block::Field::Artist, text); }
    void ID3V1SetAlbumW(const QString& text) { SetId3v1(Id3v1Block::Field::Album, text); }
    void ID3V1SetYearW(const QString& text) { SetId3v1(Id3v1Block::Field::Year, text); }
    void ID3V1SetGenreW(const QString& text) { SetId3v1(Id3v1Block::Field::Genre, text); }
    void ID3V1SetTrackW(const QString& text) { SetId3v1(Id3v1Block::Field::Track, text); }
    void ID3V1SetCommentW(const QString& text) { SetId3v1(Id3v1Block::Field::Comment, text); }
    /** "1.0" or "1.1"; empty without such a tag. */
    QString ID3V1GetVersionW() const { return data_.id3v1.Version(); }
    /** Whether files of this format have such a tag. */
    bool ID3V1IsPossible() const { return data_.format == AudioFormat::Mpeg; }
    /** How many genres there are, and the name at an index from 0; empty out of range. */
    static int ID3V1GetGenresW();
    static QString ID3V1GetGenreItemW(int index);
    /** False, with AUDIOGetLastErrorTextW and an unchanged file, when it fails. See WriteTags for what is safe. */
    bool ID3V1SaveChangesToFileW() { return Save(true, false); }

    /** First frame of this identifier (FrameId). "TYER" also answers from "TDRC". */
    QString ID3V2GetTextFrameW(quint32 frame) const { return data_.texts.value(frame); }
    /** An empty text removes the frame. */
    void ID3V2SetTextFrameW(quint32 frame, const QString& text);
    /** As names: "(17)" and "17" are "Rock"; several joined by " / ". */
    QString ID3V2GetGenreW() const { return ID3V2GetTextFrameW(FrameId("TCON")); }
    void ID3V2SetGenreW(const QString& text) { ID3V2SetTextFrameW(FrameId("TCON"), text); }
    int ID3V2GetFrameCountW(quint32 frame) const;
    /** Comments, user texts, lyrics and pictures count from 1; out of range gives an empty text. */
    QString ID3V2GetCommentDescriptionW(int index) const { return data_.comments.value(index - 1).description; }
    QString ID3V2GetCommentW(int index) const { return data_.comments.value(index - 1).text; }
    /** Replaces the comment of the same description; an empty text removes it. */
    void ID3V2AddCommentW(const QString& language, const QString& description, const QString& text);
    QString ID3V2GetUserTextW(int index) const { return data_.userTexts.value(index - 1); }
    QString ID3V2GetLyricW(int index) const { return data_.lyrics.value(index - 1).text; }
    void ID3V2AddLyricW(const QString& language, const QString& description, const QString& text);
    void ID3V2DeleteAllFramesW(quint32 frame);
    QByteArray ID3V2GetPictureArrayW(int index) const { return data_.pictures.value(index - 1).bytes; }
    int ID3V2GetPictureSizeW(int index) const { return static_cast<int>(ID3V2GetPictureArrayW(index).size()); }
    int ID3V2GetPictureTypeW(int index) const { return data_.pictures.value(index - 1).type; }
    QString ID3V2GetPictureMimeW(int index) const { return data_.pictures.value(index - 1).mime; }
    QString ID3V2GetPictureDescriptionW(int index) const { return data_.pictures.value(index - 1).description; }
    /** False when the file is no picture that players show (JPEG, PNG, GIF) or has more than 16 MiB. */
    bool ID3V2AddPictureFileW(const QString& file, const QString& description, int type);
    void ID3V2AddPictureW(const TagPicture& picture);
    /** E.g. "2.3"; empty without such a tag. */
    QString ID3V2GetVersionW() const { return data_.id3v2Version; }
    /** False for a tag with parts that are not read and would be lost: saving changes of it fails. */
    bool IsId3v2Writable() const { return !data_.damaged; }
    /** As with ID3v1; in Ogg files the comments. */
    bool ID3V2SaveChangesToFileW() { return Save(false, true); }
    /** Both tags in one pass. */
    bool SaveChangesToFile() { return Save(true, true); }

private:
    void SetId3v1(Id3v1Block::Field field, const QString& text);
    void Change(TagChange change);
    bool Save(bool id3v1, bool id3v2);

    QString path_;
    TagData data_;
    QList<TagChange> changes_; ///< of the ID3v2 tag, not saved yet
    bool id3v1Changed_ = false;
    QString error_;
};

} // namespace kalvo
