#include "tags/OggFields.h"

#include "tags/AudioFormat.h"

#include <QHash>

namespace kalvo::OggFields {

namespace {

using namespace Qt::StringLiterals;

struct Field {
    quint32 frame;
    QStringList names;
};

const QList<Field>& Fields() {
    static const QList<Field> fields{{FrameId("TIT2"), {u"TITLE"_s}},
                                     {FrameId("TPE1"), {u"ARTIST"_s}},
                                     {FrameId("TALB"), {u"ALBUM"_s}},
                                     {FrameId("TYER"), {u"DATE"_s, u"YEAR"_s}},
                                     {FrameId("TRCK"), {u"TRACKNUMBER"_s, u"TRACK"_s}},
                                     {FrameId("TBPM"), {u"BPM"_s, u"TEMPO"_s}},
                                     {FrameId("TCON"), {u"GENRE"_s}},
                                     {FrameId("TCOM"), {u"COMPOSER"_s}},
                                     {FrameId("TENC"), {u"ENCODED-BY"_s}},
                                     {FrameId("COMM"), {u"COMMENT"_s, u"DESCRIPTION"_s}},
                                     {FrameId("USLT"), {u"LYRICS"_s, u"UNSYNCEDLYRICS"_s}}};
    return fields;
}

} // namespace

QStringList Names(quint32 frame) {
    for (const Field& field : Fields()) {
        if (field.frame == frame)
            return field.names;
    }
    return {};
}

QStringList RatingNames() {
    return {u"RATING"_s};
}

const QList<quint32>& TextFrames() {
    static const QList<quint32> frames = [] {
        QList<quint32> result;
        for (const Field& field : Fields()) {
            if (field.frame != FrameId("COMM") && field.frame != FrameId("USLT"))
                result.append(field.frame);
        }
        return result;
    }();
    return frames;
}

} // namespace kalvo::OggFields
