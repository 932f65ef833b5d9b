#include "archive/CategoryLists.h"

#include "archive/ArchiveStatements.h"
#include "base/AnsiText.h"
#include "base/AtomicFile.h"

#include <QFile>

#include <algorithm>

namespace kalvo::CategoryLists {

namespace {

using namespace Qt::StringLiterals;

QString PathOf(const DataFolder& folder, ArchiveField field) {
    return folder.Path(u'\\' + Name(field));
}

} // namespace

QString Name(ArchiveField field) {
    return FieldCaption(field);
}

std::optional<ArchiveField> FieldOf(QStringView name) {
    const auto found =
        std::find_if(kFields.begin(), kFields.end(), [&](ArchiveField field) { return Name(field) == name; });
    return found == kFields.end() ? std::nullopt : std::optional(*found);
}

std::optional<QString> ReadJoined(const DataFolder& folder, ArchiveField field) {
    QFile file(PathOf(folder, field));
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QString line = AnsiText::Decode(file.readAll());
    while (line.endsWith(u'\n') || line.endsWith(u'\r'))
        line.chop(1);
    return line;
}

std::optional<QStringList> Read(const DataFolder& folder, ArchiveField field) {
    const auto joined = ReadJoined(folder, field);
    if (!joined)
        return std::nullopt;
    return joined->isEmpty() ? QStringList() : joined->split(u'\n');
}

bool Write(const DataFolder& folder, ArchiveField field, const QStringList& values) {
    return WriteAtomically(PathOf(folder, field), AnsiText::Encode(values.join(u'\n') + u"\r\n"_s));
}

QString AllEntry() {
    return u"<alle>"_s;
}

QStringList Entries(const QStringList& values) {
    QStringList entries{AllEntry()};
    for (const QString& value : values)
        if (const QString trimmed = value.trimmed(); !trimmed.isEmpty())
            entries.append(trimmed);
    return entries;
}

QString Statement(ArchiveField field, const QString& entry) {
    return entry == AllEntry() ? ArchiveStatements::All() : ArchiveStatements::ColumnValue(field, entry);
}

} // namespace kalvo::CategoryLists
