#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

class QMimeData;

namespace kalvo::DragTypes {

/** What is dragged between the windows: rows of plain fields, whose order the type's owner defines. */
using Rows = QList<QStringList>;

/** Entries of a playlist. */
QString PlaylistEntries();
/** Titles of the music archive. */
QString ArchiveTitles();

QByteArray Pack(const Rows& rows);
/** No value when the bytes are not what Pack wrote. */
std::optional<Rows> Unpack(const QByteArray& bytes);

void Put(QMimeData& data, const QString& type, const Rows& rows);
/** No value when the type is absent or its bytes are damaged. */
std::optional<Rows> Take(const QMimeData* data, const QString& type);

} // namespace kalvo::DragTypes
