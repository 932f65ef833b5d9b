#pragma once

#include "archive/ArchiveField.h"
#include "base/DataFolder.h"

#include <QStringList>

#include <optional>

/** The values that the automatic DJ offers, out of the category files; see CategoryLists. */
namespace kalvo::AutoDjValues {

/** Trimmed, each once, without empty ones, sorted as in a telephone book; none when there is no such file. */
std::optional<QStringList> Read(const DataFolder& folder, ArchiveField field);

/** The values that hold the text, without case, and are not among `taken`; their order stays. */
QStringList Offered(const QStringList& values, const QString& text, const QStringList& taken);

} // namespace kalvo::AutoDjValues
