#include "archive/TitleRow.h"

#include "archive/GridColumns.h"

#include <array>

namespace kalvo::TitleRow {

namespace {

/** In the order of GridColumns::Fields(). */
constexpr std::array<QString TitleRecord::*, 12> texts{
    &TitleRecord::Titel, &TitleRecord::Interpret, &TitleRecord::Album,  &TitleRecord::Bewertung,
    &TitleRecord::Stil,  &TitleRecord::Zeit,      &TitleRecord::Jahr,   &TitleRecord::Pfad,
    &TitleRecord::Extra1, &TitleRecord::Extra2,   &TitleRecord::Extra3, &TitleRecord::Extra4};

} // namespace

QString Text(const TitleRecord& title, const QString& field) {
    const qsizetype place = GridColumns::Fields().indexOf(field);
    return place < 0 ? QString() : title.*texts[static_cast<std::size_t>(place)];
}

QStringList Pack(const TitleRecord& title) {
    QStringList packed{QString::number(title.Nr)};
    for (QString TitleRecord::*text : texts)
        packed.append(title.*text);
    return packed;
}

TitleRecord Unpack(const QStringList& packed) {
    TitleRecord title;
    title.Nr = packed.value(0).toLongLong();
    qsizetype place = 1;
    for (QString TitleRecord::*text : texts)
        title.*text = packed.value(place++);
    return title;
}

} // namespace kalvo::TitleRow
