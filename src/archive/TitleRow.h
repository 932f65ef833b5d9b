#pragma once

#include "tags/TitleRecord.h"

#include <QStringList>

/** A title as plain texts, in the order Nr, Titel, Interpret, ... Extra4: how titles are dragged between windows. */
namespace kalvo::TitleRow {

QStringList Pack(const TitleRecord& title);

/** Missing texts stay empty, further ones are ignored. */
TitleRecord Unpack(const QStringList& texts);

} // namespace kalvo::TitleRow
