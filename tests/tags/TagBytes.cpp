#include "tags/TagBytes.h"

namespace kalvo::test {

namespace {

QByteArray Size(qsizetype value, int bits, int bytes = 4) {
    QByteArray result;
    for (int shift = (bytes - 1) * bits; shift >= 0; shift -= bits)
        result.append(static_cast<char>((value >> shift) & ((1 << bits) - 1)));
    return result;
}

} // namespace

QByteArray Id3v1(const QByteArray& title, const QByteArray& artist, char genre) {
    const auto field = [](const QByteArray& text, int width) { return text.leftJustified(width, '\0', true); };
    return "TAG" + field(title, 30) + field(artist, 30) + field("Album eins", 30) + "1987" + field("Hallo", 28) +
           QByteArray("\0\x07", 2) + genre;
}

QByteArray Id3v2Header(int version, qsizetype size) {
    return QByteArray("ID3") + static_cast<char>(version) + QByteArray(2, '\0') + Size(size, 7);
}

QByteArray Id3v2(int version, const Frames& frames, char flags) {
    QByteArray body;
    for (const auto& [name, content] : frames) {
        if (version == 2)
            body += name + Size(content.size(), 8, 3) + content;
        else
            body += name + Size(content.size(), version == 4 ? 7 : 8) + '\0' + flags + content;
    }
    return Id3v2Header(version, body.size()) + body;
}

QByteArray Latin1(const QByteArray& text) {
    return QByteArray(1, '\0') + text;
}

} // namespace kalvo::test
