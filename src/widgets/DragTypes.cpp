#include "widgets/DragTypes.h"

#include <QDataStream>
#include <QIODevice>
#include <QMimeData>

namespace kalvo::DragTypes {

namespace {

constexpr quint32 signature = 0x4B414C31; // "KAL1"

} // namespace

QString PlaylistEntries() {
    return QStringLiteral("application/x-kalvo-playlist-entries");
}
QString ArchiveTitles() {
    return QStringLiteral("application/x-kalvo-archive-titles");
}

QByteArray Pack(const Rows& rows) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_4);
    stream << signature << rows;
    return bytes;
}

std::optional<Rows> Unpack(const QByteArray& bytes) {
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_6_4);
    quint32 found = 0;
    Rows rows;
    stream >> found;
    if (stream.status() != QDataStream::Ok || found != signature)
        return std::nullopt;
    stream >> rows;
    if (stream.status() != QDataStream::Ok || !stream.atEnd())
        return std::nullopt;
    return rows;
}

void Put(QMimeData& data, const QString& type, const Rows& rows) {
    data.setData(type, Pack(rows));
}

std::optional<Rows> Take(const QMimeData* data, const QString& type) {
    if (!data || !data->hasFormat(type))
        return std::nullopt;
    return Unpack(data->data(type));
}

} // namespace kalvo::DragTypes
