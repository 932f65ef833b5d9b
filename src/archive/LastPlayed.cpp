#include "archive/LastPlayed.h"

#include "archive/Archive.h"
#include "archive/MemoryIndex.h"
#include "archive/RowCache.h"

namespace kalvo {

namespace {

using namespace Qt::StringLiterals;

constexpr int kDateLength = 10;

QDate DateOf(const QString& stamp) {
    const QString date = stamp.left(kDateLength);
    const QDate sortable = QDate::fromString(date, u"yyyy.MM.dd"_s);
    return sortable.isValid() ? sortable : QDate::fromString(date, u"dd.MM.yyyy"_s);
}

} // namespace

LastPlayedCounts CountLastPlayed(const StampCounts& stamps, const QDate& today) {
    constexpr qint64 week = 7, month = 30;
    LastPlayedCounts counts;
    for (const auto& [stamp, titles] : stamps) {
        const QDate date = DateOf(stamp);
        const qint64 days = date.daysTo(today);
        qint64& place = stamp.isEmpty()   ? counts.never
                        : !date.isValid() ? counts.earlier
                        : days <= 0       ? counts.today
                        : days < week     ? counts.week
                        : days < month    ? counts.month
                                          : counts.earlier;
        place += titles;
    }
    return counts;
}

QString LastPlayedStamp(const QDateTime& moment) {
    return moment.toString(u"yyyy.MM.dd, HH:mm"_s);
}

StampCounts ArchiveDatabase::CountStamps() const {
    StampCounts counts;
    SqliteStatement select = database_.Prepare(u"SELECT Extra2, count(*) FROM \"Daten\" GROUP BY Extra2"_s);
    while (select.Step())
        counts.append({select.Text(0), select.Number(1)});
    return counts;
}

WriteResult ArchiveDatabase::ClearStamps(QList<qint64>& numbers) {
    SqliteStatement select = database_.Prepare(u"SELECT Nr FROM \"Daten\" WHERE Extra2 <> ''"_s);
    while (select.Step())
        numbers.append(select.Number(0));
    if (readOnly_ || select.Failed() || !database_.Execute(u"UPDATE \"Daten\" SET Extra2 = '' WHERE Extra2 <> ''"_s))
        return Failure();
    return {true, {}};
}

StampCounts Archive::CountStamps() const {
    return database_.IsOpen() ? database_.CountStamps() : StampCounts();
}

WriteResult Archive::ClearStamps() {
    QList<qint64> numbers;
    WriteResult cleared = database_.ClearStamps(numbers);
    if (!cleared)
        return cleared;
    for (const TitleRecord& record : database_.Read(numbers))
        PutIntoIndex(record);
    cache_->Clear();
    Refresh();
    return cleared;
}

} // namespace kalvo
