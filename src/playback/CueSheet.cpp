#include "playback/CueSheet.h"

#include <algorithm>
#include <cmath>

namespace kalvo {

namespace {

constexpr int kFramesPerSecond = 75; // the unit of a cue sheet
const QByteArray kLineEnd = QByteArrayLiteral("\r\n");

/** "123:45:67", minutes, seconds and frames. */
QByteArray TimeOf(double seconds) {
    const qint64 frames = std::llround(std::max(0.0, seconds) * kFramesPerSecond);
    const qint64 whole = frames / kFramesPerSecond;
    const auto two = [](qint64 number) { return QByteArray::number(number).rightJustified(2, '0'); };
    return two(whole / 60) + ':' + two(whole % 60) + ':' + two(frames % kFramesPerSecond);
}

/** The form knows no way to write a quotation mark within a text. */
QByteArray Quoted(const QString& text) {
    return '"' + text.simplified().replace(u'"', u'\'').toUtf8() + '"';
}

QByteArray KindOf(const QString& file) {
    return file.endsWith(QStringLiteral(".mp3"), Qt::CaseInsensitive) ? "MP3" : "WAVE";
}

} // namespace

QByteArray CueSheetText(const QList<CueTrack>& tracks) {
    // The mark stands before a remark, where readers that do not know it pass it over.
    QByteArray text = QByteArrayLiteral("\xEF\xBB\xBFREM Mitschnitt") + kLineEnd;
    QString file;
    for (int i = 0; i < tracks.size(); ++i) {
        const CueTrack& track = tracks.at(i);
        const bool first = track.file != file;
        if (first) {
            file = track.file;
            text += "FILE " + Quoted(file) + ' ' + KindOf(file) + kLineEnd;
        }
        text += "  TRACK " + QByteArray::number(i + 1).rightJustified(2, '0') + " AUDIO" + kLineEnd;
        text += "    TITLE " + Quoted(track.title) + kLineEnd;
        if (!track.artist.isEmpty())
            text += "    PERFORMER " + Quoted(track.artist) + kLineEnd;
        const QByteArray begin = TimeOf(track.seconds);
        if (first && begin != TimeOf(0))
            text += "    INDEX 00 " + TimeOf(0) + kLineEnd;
        text += "    INDEX 01 " + begin + kLineEnd;
    }
    return text;
}

} // namespace kalvo
