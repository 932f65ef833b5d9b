#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <array>

namespace kalvo {

/** One of the times at which a scheduled file plays. Texts as the file holds them, also those that mean nothing. */
struct JingleSlot {
    QString mode = Off(); ///< Daily(), Weekly() or Off()
    QString weekday;      ///< of Weekdays(); blank for none
    QString time = QStringLiteral("00:00");

    bool operator==(const JingleSlot&) const = default;

    static QString Daily() { return QStringLiteral("Täglich"); }
    static QString Weekly() { return QStringLiteral("Wöchentlich"); }
    static QString Off() { return QStringLiteral("Deaktiviert"); }
    /** Monday first; these names whatever the locale. */
    static const QStringList& Weekdays();
    /** A slot without any text, as a cleared record has it. */
    static JingleSlot Empty() { return {{}, {}, {}}; }
};

/** A scheduled file: what plays, when, and whether at all. */
struct JingleRecord {
    static constexpr int kSlots = 5;
    static constexpr int kPathWidth = 150; ///< bytes in the file

    qint16 number = 0; ///< kept as it was read; new records get their own number
    std::array<JingleSlot, kSlots> slots{JingleSlot::Empty(), JingleSlot::Empty(), JingleSlot::Empty(),
                                         JingleSlot::Empty(), JingleSlot::Empty()};
    QString path;
    bool active = false;
    bool afterTitle = false; ///< waits for the end of the title on air; not part of the record

    bool operator==(const JingleRecord&) const = default;

    bool IsEmpty() const { return path.isEmpty(); }
    /** Whether the path goes into its field as it is. */
    static bool Fits(const QString& path);
    /** The times in words: "täglich 08:00, Montag 17:30"; empty when there is none. */
    QString TimesText() const;
};

enum class JingleDue : unsigned char { No, Daily, Weekly };

/** Whether one of the record's slots names this minute; daily goes before weekly. A record not active is never due. */
JingleDue DueAt(const JingleRecord& record, const QDateTime& now);

} // namespace kalvo
