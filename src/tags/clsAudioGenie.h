#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

namespace kalvo {

/** What AUDIOAnalyzeFileW found; 0 is a file that cannot be read as sound. */
enum class AudioFormat : int { Unknown = 0, Mpeg = 1, OggVorbis = 2, OggOpus = 3 };

/** A frame identifier as a number: its four characters, the first in the highest byte. */
constexpr quint32 FrameId(const char (&name)[5]) {
    const auto byte = [&name](int index) { return static_cast<quint32>(static_cast<unsigned char>(name[index])); };
    return byte(0) << 24U | byte(1) << 16U | byte(2) << 8U | byte(3);
}

/**
 * Tags and technical data of one current file: analyse a file, then read its fields. A read after another analysis
 * returns the other file's data; before the first, and of a file that cannot be read, texts are empty and numbers 0.
 * Ogg comments come through the same getters as the frames that they correspond to. An object belongs to one thread;
 * several objects may work beside each other.
 */
class clsAudioGenie {
public:
    clsAudioGenie();
    ~clsAudioGenie();
    clsAudioGenie(const clsAudioGenie&) = delete;
    clsAudioGenie& operator=(const clsAudioGenie&) = delete;

    /** Loads a file; the format is told by its content. */
    AudioFormat AUDIOAnalyzeFileW(const QString& path);
    /** Seconds, exact. */
    double AUDIOGetDurationW() const;
    /** kbit/s, the average. */
    int AUDIOGetBitrateW() const;
    /** Hz. */
    int AUDIOGetSampleRateW() const;
    int AUDIOGetChannelsW() const;

    QString ID3V1GetTitleW() const;
    QString ID3V1GetArtistW() const;
    QString ID3V1GetAlbumW() const;
    QString ID3V1GetYearW() const;
    QString ID3V1GetGenreW() const;
    QString ID3V1GetTrackW() const;
    QString ID3V1GetCommentW() const;

    /** First frame of this identifier (FrameId). "TYER" also answers from "TDRC". */
    QString ID3V2GetTextFrameW(quint32 frame) const;
    /** As names: "(17)" and "17" are "Rock"; several joined by " / ". */
    QString ID3V2GetGenreW() const;
    int ID3V2GetFrameCountW(quint32 frame) const;
    /** Comments, user texts and pictures count from 1; out of range gives an empty text. */
    QString ID3V2GetCommentDescriptionW(int index) const;
    QString ID3V2GetCommentW(int index) const;
    QString ID3V2GetUserTextW(int index) const;
    QByteArray ID3V2GetPictureArrayW(int index) const;
    int ID3V2GetPictureSizeW(int index) const;
    QString ID3V2GetPictureMimeW(int index) const;

private:
    struct File;
    std::unique_ptr<File> file_;
};

} // namespace kalvo
