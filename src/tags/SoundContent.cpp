#include "tags/SoundContent.h"

#include "tags/Id3v1Block.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QtEndian>

namespace kalvo::SoundContent {

namespace {

constexpr qint64 kPiece = 65536;
constexpr int kTagHeader = 10;
/** Pages of an Ogg file that are hashed; the comments' own pages before them may be many. */
constexpr int kPages = 16;
constexpr int kMostPages = 4096;

QByteArray At(QFile& file, qint64 position, qint64 length) {
    return position >= 0 && file.seek(position) ? file.read(length) : QByteArray();
}

/** Where the sound starts behind ID3v2 tags. */
qint64 MpegStart(QFile& file) {
    qint64 start = 0;
    while (true) {
        const QByteArray head = At(file, start, kTagHeader);
        if (head.size() < kTagHeader || !head.startsWith("ID3"))
            return start;
        qint64 length = 0;
        for (int i = 6; i < kTagHeader; ++i)
            length = length << 7 | (head.at(i) & 0x7F);
        const bool footer = (head.at(5) & 0x10) != 0;
        start += length + (footer ? 2 : 1) * qint64{kTagHeader};
    }
}

void HashMpeg(QFile& file, QCryptographicHash& hash) {
    const qint64 start = MpegStart(file);
    const bool tagged = Id3v1Block(At(file, file.size() - Id3v1Block::kSize, Id3v1Block::kSize)).IsPresent();
    const qint64 end = file.size() - (tagged ? Id3v1Block::kSize : 0);
    const qint64 length = std::max<qint64>(0, end - start);
    hash.addData(QByteArray::number(length));
    hash.addData(At(file, start, std::min(kPiece, length)));
    hash.addData(At(file, start + length / 2, std::min(kPiece, length - length / 2)));
    hash.addData(At(file, end - std::min(kPiece, length), std::min(kPiece, length)));
}

/** The sound's first pages and the place of the last one: what stays when the comments before it change. */
void HashOgg(QFile& file, QCryptographicHash& hash) {
    qint64 position = 0;
    int hashed = 0;
    for (int page = 0; page < kMostPages && hashed < kPages; ++page) {
        const QByteArray head = At(file, position, 27);
        if (head.size() < 27 || !head.startsWith("OggS"))
            break;
        const QByteArray lacing = At(file, position + 27, static_cast<unsigned char>(head.at(26)));
        qint64 length = 0;
        for (const char piece : lacing)
            length += static_cast<unsigned char>(piece);
        const qint64 body = position + 27 + lacing.size();
        const auto place = qFromLittleEndian<qint64>(head.constData() + 6);
        if (place > 0) {
            hash.addData(head.mid(6, 12)); // place and stream
            hash.addData(At(file, body, length));
            ++hashed;
        }
        position = body + length;
    }
    const QByteArray tail = At(file, std::max<qint64>(0, file.size() - kPiece), kPiece);
    if (const auto last = tail.lastIndexOf("OggS"); last >= 0)
        hash.addData(tail.mid(last + 6, 12));
}

} // namespace

QByteArray Hash(const QString& path) {
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly) || file.size() == 0)
        return {};
    QCryptographicHash hash(QCryptographicHash::Sha1);
    if (At(file, 0, 4) == "OggS")
        HashOgg(file, hash);
    else
        HashMpeg(file, hash);
    return hash.result().toHex();
}

} // namespace kalvo::SoundContent
