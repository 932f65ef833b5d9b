#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>

namespace kalvo::test {

/** An ID3v1.1 tag as it stands at a file's end, with album "Album eins", year 1987, track 7 and comment "Hallo". */
QByteArray Id3v1(const QByteArray& title, const QByteArray& artist, char genre);

using Frames = QList<QPair<QByteArray, QByteArray>>;

/** An ID3v2 tag of version 2.2, 2.3 or 2.4 from identifiers and contents of frames; flags: of every frame. */
QByteArray Id3v2(int version, const Frames& frames, char flags = 0);
/** The tag's header alone, which claims so many bytes. */
QByteArray Id3v2Header(int version, qsizetype size);

/** Content of a text frame in Latin-1. */
QByteArray Latin1(const QByteArray& text);

} // namespace kalvo::test
