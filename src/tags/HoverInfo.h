#pragma once

#include <QString>

namespace kalvo {

class clsAudioGenie;

/** What a floating tip tells of a file, besides artist and title. */
struct HoverInfo {
    QString album;
    QString year;
    QString genre;
    QString rating;
    QString comment; ///< of the ID3v1 tag; in Ogg files the comment
    QString lyric;
};

/** Analyses the file. All empty when it cannot be read. */
HoverInfo ReadHoverInfo(clsAudioGenie& tags, const QString& path);

/** The text of the tip: lines separated by CR LF; artist and title as the list shows them. */
QString HoverText(const QString& artist, const QString& title, const HoverInfo& info);
/** The same with the lyric below, or "keine Lyrics vorhanden...". */
QString LyricsText(const QString& artist, const QString& title, const HoverInfo& info);

} // namespace kalvo
