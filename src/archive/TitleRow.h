#pragma once

#include "tags/TitleRecord.h"

#include <QStringList>

/** A title as plain texts, in the order Nr, Titel, Interpret, ... Extra4: how titles are dragged between windows. */
namespace kalvo::TitleRow {

/** Text of one field of table "Daten" by its name; empty for an unknown one. */
QString Text(const TitleRecord& title, const QString& field);

QStringList Pack(const TitleRecord& title);

/** Missing texts stay empty, further ones are ignored. */
TitleRecord Unpack(const QStringList& texts);

} // namespace kalvo::TitleRow
