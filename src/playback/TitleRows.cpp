#include "playback/TitleRows.h"

#include "base/SetAside.h"

#include <QFile>
#include <QJsonDocument>

#include <algorithm>

namespace kalvo::TitleRows {

namespace {

using namespace Qt::StringLiterals;

constexpr int kFormat = 1;

bool IsRow(const QJsonArray& row, qsizetype places) {
    return row.size() == places &&
           std::all_of(row.begin(), row.end(), [](const QJsonValue& place) { return place.isDouble(); });
}

} // namespace

QHash<QString, QJsonArray> Read(const QString& file, qsizetype places, const Clock& clock) {
    QFile stored(file);
    if (!stored.open(QIODevice::ReadOnly))
        return {};
    const QJsonObject json = QJsonDocument::fromJson(stored.readAll()).object();
    stored.close();
    if (json[u"format"].toInt() != kFormat || !json[u"titel"].isObject()) {
        SetAside(file, clock);
        return {};
    }
    QHash<QString, QJsonArray> rows;
    const QJsonObject titles = json[u"titel"].toObject();
    for (auto title = titles.begin(); title != titles.end(); ++title) {
        const QJsonArray row = title.value().toArray();
        if (IsRow(row, places))
            rows.insert(title.key(), row);
    }
    return rows;
}

QByteArray ToJson(const QJsonObject& titles) {
    return QJsonDocument(QJsonObject{{u"format"_s, kFormat}, {u"titel"_s, titles}}).toJson(QJsonDocument::Compact);
}

} // namespace kalvo::TitleRows
