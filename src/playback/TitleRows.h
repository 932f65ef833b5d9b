#pragma once

#include <QByteArray>
#include <QHash>
#include <QJsonArray>
#include <QJsonObject>
#include <QString>

namespace kalvo {

class Clock;

/** The file of a TitleStore: {"format": 1, "titel": {path: [numbers]}}. */
namespace TitleRows {

/**
 * The rows by path; those that are not so many numbers are left out. Empty when there is no such file. One that is
 * something else is set aside under a dated name.
 */
QHash<QString, QJsonArray> Read(const QString& file, qsizetype places, const Clock& clock);

QByteArray ToJson(const QJsonObject& titles);

} // namespace TitleRows

} // namespace kalvo
