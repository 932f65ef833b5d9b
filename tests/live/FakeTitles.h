#pragma once

#include "archive/PlainArchive.h"
#include "archive/RecordSource.h"
#include "live/AutoDj.h"

namespace kalvo::test {

using namespace Qt::StringLiterals;

/** An archive in memory that keeps what it was asked; titles are numbered from 1. */
class FakeTitles final : public TitleSource {
public:
    void Add(const QString& artist, const QString& title, const QString& genre = u"Pop"_s,
             const QString& time = u"05:00"_s, const QString& stamp = {}) {
        TitleRecord& record = titles.emplaceBack();
        record.Nr = titles.size();
        record.Interpret = artist;
        record.Titel = title;
        record.Stil = genre;
        record.Zeit = time;
        record.Extra2 = stamp;
        record.Pfad = u"/m/"_s + artist + u'/' + title;
    }
    /** Titles "0", "1" and so on. */
    void AddNumbered(const QString& artist, int count, const QString& genre = u"Pop"_s,
                     const QString& time = u"05:00"_s) {
        for (int i = 0; i < count; ++i)
            Add(artist, QString::number(i), genre, time);
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
