#pragma once

#include "archive/PlainArchive.h"
#include "archive/RecordSource.h"
#include "live/AutoDj.h"

#include <QStringList>

namespace kalvo::test {

/** An archive in memory that keeps what it was asked; titles are numbered from 1. */
class FakeTitles final : public TitleSource {
public:
    void Add(const QString& artist, const QString& title, const QString& genre = QStringLiteral("Pop"),
             const QString& time = QStringLiteral("05:00"), const QString& stamp = {}) {
        TitleRecord record;
        record.Nr = titles.size() + 1;
        record.Interpret = artist;
        record.Titel = title;
        record.Stil = genre;
        record.Zeit = time;
        record.Extra2 = stamp;
        record.Pfad = QStringLiteral("/m/") + artist + u'/' + title;
        titles.append(record);
    }

    std::vector<qint64> Select(const QString& statement) const override {
        asked.append(statement);
        std::vector<qint64> numbers;
        const std::optional<RecordSource> source = ParseRecordSource(statement);
        for (const TitleRecord& title : titles) {
            if (source &&
                PlainArchive::Like(FieldText(title, source->conditions.at(0).field), source->conditions.at(0).text))
                numbers.push_back(title.Nr);
        }
        return numbers;
    }
    QList<TitleRecord> Read(const QList<qint64>& numbers) const override {
        QList<TitleRecord> found;
        for (const qint64 number : numbers)
            found.append(titles.at(number - 1));
        return found;
    }

    QList<TitleRecord> titles;
    mutable QStringList asked;
};

} // namespace kalvo::test
