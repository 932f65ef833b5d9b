#include "archive/ArchiveField.h"

namespace kalvo {

namespace {

struct FieldEntry {
    QLatin1StringView name;
    QLatin1StringView caption;
    QString TitleRecord::*place;
};

using namespace Qt::StringLiterals;

const std::array<FieldEntry, kFieldCount> kFields = {{
    {"Nr"_L1, "Nr"_L1, nullptr},
    {"Titel"_L1, "Titel"_L1, &TitleRecord::Titel},
    {"Interpret"_L1, "Interpret"_L1, &TitleRecord::Interpret},
    {"Album"_L1, "Album"_L1, &TitleRecord::Album},
    {"Bewertung"_L1, "Bewertung"_L1, &TitleRecord::Bewertung},
    {"Stil"_L1, "Stil"_L1, &TitleRecord::Stil},
    {"Zeit"_L1, "Zeit"_L1, &TitleRecord::Zeit},
    {"Jahr"_L1, "Jahr"_L1, &TitleRecord::Jahr},
    {"Pfad"_L1, "Pfad"_L1, &TitleRecord::Pfad},
    {"Extra1"_L1, "Kommentar"_L1, &TitleRecord::Extra1},
    {"Extra2"_L1, "Zuletzt Gespielt"_L1, &TitleRecord::Extra2},
    {"Extra3"_L1, "Track"_L1, &TitleRecord::Extra3},
    {"Extra4"_L1, "BPM"_L1, &TitleRecord::Extra4},
}};

const FieldEntry& Entry(ArchiveField field) {
    return kFields[static_cast<std::size_t>(field)];
}

std::optional<ArchiveField> FieldOf(QStringView text, QLatin1StringView FieldEntry::*part) {
    for (int i = 0; i < kFieldCount; ++i) {
        const auto field = static_cast<ArchiveField>(i);
        if (text.compare(Entry(field).*part, Qt::CaseInsensitive) == 0)
            return field;
    }
    return std::nullopt;
}

} // namespace

QString FieldName(ArchiveField field) {
    return Entry(field).name;
}

QString FieldCaption(ArchiveField field) {
    return Entry(field).caption;
}

std::optional<ArchiveField> FieldOfName(QStringView name) {
    return FieldOf(name, &FieldEntry::name);
}

std::optional<ArchiveField> FieldOfCaption(QStringView caption) {
    return FieldOf(caption, &FieldEntry::caption);
}

QString FieldText(const TitleRecord& record, ArchiveField field) {
    return field == ArchiveField::Nr ? QString::number(record.Nr) : record.*Entry(field).place;
}

void CutText(QString& text, qsizetype characters) {
    if (text.size() > characters)
        text.truncate(characters - (text.at(characters - 1).isHighSurrogate() ? 1 : 0));
}

QString& FieldPlace(TitleRecord& record, ArchiveField field) {
    return record.*Entry(field).place;
}

const QString& FieldPlace(const TitleRecord& record, ArchiveField field) {
    return record.*Entry(field).place;
}

} // namespace kalvo
