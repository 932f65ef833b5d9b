#pragma once

#include "support/SoundMaker.h"
#include "support/TestFolder.h"
#include "tags/TagForm.h"
#include "tags/clsAudioGenie.h"

#include <gtest/gtest.h>

namespace kalvo::test {

/** An ID3v1.1 tag as it stands at a file's end, with album "Album eins", year 1987, track 7 and comment "Hallo". */
inline QByteArray Id3v1(const QByteArray& title, const QByteArray& artist, char genre) {
    const auto field = [](const QByteArray& text, int width) { return text.leftJustified(width, '\0', true); };
    return "TAG" + field(title, 30) + field(artist, 30) + field("Album eins", 30) + "1987" + field("Hallo", 28) +
           QByteArray("\0\x07", 2) + genre;
}

inline QByteArray TagSize(qsizetype value, int bits, int bytes = 4) {
    QByteArray result;
    for (int shift = (bytes - 1) * bits; shift >= 0; shift -= bits)
        result.append(static_cast<char>((value >> shift) & ((1 << bits) - 1)));
    return result;
}

/** The header of an ID3v2 tag alone, which claims so many bytes. */
inline QByteArray Id3v2Header(int version, qsizetype size) {
    return QByteArray("ID3") + static_cast<char>(version) + QByteArray(2, '\0') + TagSize(size, 7);
}

/** An ID3v2 tag of version 2.2, 2.3 or 2.4 from identifiers and contents of frames; flags: of every frame. */
inline QByteArray Id3v2(int version, const QList<QPair<QByteArray, QByteArray>>& frames, char flags = 0) {
    QByteArray body;
    for (const auto& [name, content] : frames) {
        if (version == 2)
            body += name + TagSize(content.size(), 8, 3) + content;
        else
            body += name + TagSize(content.size(), version == 4 ? 7 : 8) + '\0' + flags + content;
    }
    return Id3v2Header(version, body.size()) + body;
}

/** Content of a text frame in Latin-1. */
inline QByteArray Latin1(const QByteArray& text) {
    return QByteArray(1, '\0') + text;
}

/** A folder for sound files, and what reads and writes their tags. */
struct TagTest : ::testing::Test {
    QString Sound(const QString& name, const SoundSpec& spec = {}) const {
        return MakeSound(folder.Path(), name, spec);
    }
    /** One second of MP3 without a tag. */
    QByteArray BareSound() const {
        Sound(QStringLiteral("bare.mp3"), {.options = {QStringLiteral("--noreplaygain")}});
        return folder.Read(QStringLiteral("bare.mp3"));
    }
    /** Of the file that was analysed last. */
    QString Text(const char (&frame)[5]) const { return tags.ID3V2GetTextFrameW(FrameId(frame)); }
    /** Writes these texts alone; the reason where that fails. */
    QString Save(const QString& path, const QList<std::pair<TagField, QString>>& texts) {
        TagEdit edit;
        for (const auto& [field, text] : texts)
            edit.Text(field) = text;
        return WriteTagEdit(tags, path, edit).reason;
    }

    TestFolder folder;
    clsAudioGenie tags;
};

} // namespace kalvo::test
