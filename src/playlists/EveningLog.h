#pragma once

#include "base/BackgroundWorker.h"

#include <QDateTime>
#include <QList>
#include <QString>

namespace kalvo {

/** Who had a title played. The texts in the file are those of OriginText(). */
enum class PlayOrigin : quint8 { Player, Wish, Automatic, Jingle };

/** One title of the evening. */
struct PlayedTitle {
    QDateTime start; ///< whole seconds, local time
    PlayOrigin origin = PlayOrigin::Player;
    int player = 0; ///< 1 or 2; 0 for what has no player, a jingle for example
    QString artist;
    QString title;
    int length = 0;  ///< seconds, 0 = unknown
    int played = -1; ///< seconds it was heard; -1 while it plays, or when the program was cut off
    QString path;

    bool operator==(const PlayedTitle&) const = default;
};

/** "Player", "Wunsch", "Automatik", "Jingle". */
QString OriginText(PlayOrigin origin);

/**
 * What was played when: a file "JJJJ-MM-TT.csv" for each evening in a folder, lines are only ever appended. An evening
 * begins at six in the morning, so that what is played after midnight belongs to it. A title is written when it starts
 * and, with the seconds it was heard, once more when it ends; the later line counts. A line that a crash has cut off
 * ends before the next one is written and is passed over. UI thread; syncing to the disk is done by another one.
 */
class EveningLog {
public:
    /** folder: created with the first line. */
    explicit EveningLog(QString folder);

    /** False when it could not be written. */
    bool Write(const PlayedTitle& title);

    /** Evenings that there are files of, the latest first. */
    QList<QDate> Evenings() const;
    /** The titles of an evening in the order of their starts; empty when there are none. */
    QList<PlayedTitle> Read(const QDate& evening) const;
    /** A title's start in whole seconds, as the file keeps it. */
    static QDateTime StartAt(const QDateTime& moment);
    /** The evening that a moment belongs to. */
    static QDate EveningOf(const QDateTime& moment);

    /** For a spreadsheet, with headers. */
    static QByteArray Csv(const QList<PlayedTitle>& titles);
    /** To be read and printed: one line for each title, UTF-8. */
    static QByteArray Text(const QDate& evening, const QList<PlayedTitle>& titles);

private:
    QString PathOf(const QDate& evening) const;

    QString folder_;
    BackgroundWorker syncer_;
};

} // namespace kalvo
