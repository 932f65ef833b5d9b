#include "live/JingleRecord.h"

#include "base/AnsiText.h"
#include "base/FileName.h"

#include <algorithm>

namespace kalvo {

const QStringList& JingleSlot::Weekdays() {
    static const QStringList names{QStringLiteral("Montag"),     QStringLiteral("Dienstag"), QStringLiteral("Mittwoch"),
                                   QStringLiteral("Donnerstag"), QStringLiteral("Freitag"),  QStringLiteral("Samstag"),
                                   QStringLiteral("Sonntag")};
    return names;
}

bool JingleRecord::Fits(const QString& path) {
    return AnsiText::Encode(path).size() <= kPathWidth && !FileName::HasControls(path);
}

QString JingleRecord::TimesText() const {
    QStringList times;
    for (const JingleSlot& slot : slots) {
        if (slot.mode == JingleSlot::Daily())
            times.append(QStringLiteral("täglich ") + slot.time);
        else if (slot.mode == JingleSlot::Weekly() && !slot.weekday.isEmpty())
            times.append(slot.weekday + u' ' + slot.time);
    }
    return times.join(QStringLiteral(", "));
}

JingleDue DueAt(const JingleRecord& record, const QDateTime& now) {
    if (!record.active || record.IsEmpty())
        return JingleDue::No;
    const QString time = now.toString(QStringLiteral("HH:mm"));
    const QString weekday = JingleSlot::Weekdays().at(now.date().dayOfWeek() - 1);
    const auto any = [&](auto condition) {
        return std::any_of(record.slots.begin(), record.slots.end(),
                           [&](const JingleSlot& slot) { return slot.time == time && condition(slot); });
    };
    if (any([](const JingleSlot& slot) { return slot.mode == JingleSlot::Daily(); }))
        return JingleDue::Daily;
    if (any([&](const JingleSlot& slot) { return slot.mode == JingleSlot::Weekly() && slot.weekday == weekday; }))
        return JingleDue::Weekly;
    return JingleDue::No;
}

} // namespace kalvo
