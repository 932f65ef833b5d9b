#pragma once

#include "tags/AudioFormat.h"
#include "tags/Id3v1Block.h"

#include <QHash>
#include <QList>
#include <QStringList>

namespace kalvo {

/** A comment or a lyric; language is its three letters, empty in Ogg files. */
struct TagComment {
    QString language;
    QString description;
    QString text;
};

struct TagPicture {
    QByteArray bytes;
    QString mime;
    QString description;
    int type = 3; ///< as numbered by ID3v2; 3 = front cover

    bool operator==(const TagPicture&) const = default;
};

/** Everything that was read of one file. */
struct TagData {
    AudioFormat format = AudioFormat::Unknown;
    double duration = 0; ///< seconds
    int bitrate = 0;     ///< kbit/s
    int sampleRate = 0;  ///< Hz
    int channels = 0;
    qint64 fileSize = 0; ///< bytes
    QString channelMode;
    QString version; ///< of the format, e.g. "MPEG 1 Layer III"

    Id3v1Block id3v1;
    QString id3v2Version; ///< e.g. "2.3"; empty without such a tag
    bool damaged = false; ///< the ID3v2 tag holds parts that are not read: writing would lose them
    QHash<quint32, QString> texts;
    QList<TagComment> comments;
    QList<TagComment> lyrics;
    QStringList userTexts;
    QList<TagPicture> pictures;
};

/** Description of the comment that holds a title's rating. */
inline const QString kRatingDescription = QStringLiteral("MusicMatch_Preference");

} // namespace kalvo
