#include "live/ComingJingle.h"

#include "base/FileName.h"

#include <QFileInfo>
#include <QTimeZone>

namespace kalvo {

namespace {

constexpr int kDaysAhead = 7; // the same weekday comes round
constexpr qint64 kDay = 86400;

/** When the record plays next on this day; invalid when it does not. */
QDateTime FirstOf(const JingleRecord& record, const QDate& day, const QDateTime& now) {
    QDateTime first;
    for (const JingleSlot& slot : record.slots) {
        const QDateTime at(day, QTime::fromString(slot.time, QStringLiteral("HH:mm")), now.timeZone());
        if (at.isValid() && at > now && DueAt(record, at) != JingleDue::No && !(first.isValid() && first <= at))
            first = at;
    }
    return first;
}

} // namespace

QString ComingJingle::Name() const {
    return QFileInfo(FileName::Last(path)).completeBaseName();
}

QString ComingJingle::WhenText(const QDateTime& now) const {
    const qint64 seconds = qMax<qint64>(0, now.secsTo(at));
    if (seconds >= kDay)
        return JingleSlot::Weekdays().at(at.date().dayOfWeek() - 1).left(2) + at.toString(QStringLiteral(" HH:mm"));
    return QStringLiteral("in ") + QTime(0, 0).addSecs(static_cast<int>(seconds)).toString(QStringLiteral("HH:mm:ss"));
}

std::optional<ComingJingle> ComingJingle::Next(const JingleRecords& records, const QDateTime& now) {
    std::optional<ComingJingle> next;
    for (int day = 0; day <= kDaysAhead && !next; ++day) {
        for (const JingleRecord& record : records) {
            const QDateTime at = FirstOf(record, now.date().addDays(day), now);
            if (at.isValid() && !(next && next->at <= at))
                next = ComingJingle{record.path, at};
        }
    }
    return next;
}

} // namespace kalvo
