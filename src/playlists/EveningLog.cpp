#include "playlists/EveningLog.h"

#include "base/CsvText.h"
#include "base/PlayTime.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <array>
#include <optional>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace kalvo {

namespace {

const auto nameFormat = QStringLiteral("yyyy-MM-dd");
constexpr int eveningBegins = 6;           // o'clock
const QByteArray cutOff = "[abgebrochen]"; ///< ends a line that a crash has cut off
constexpr std::array<PlayOrigin, 4> origins{PlayOrigin::Player, PlayOrigin::Wish, PlayOrigin::Automatic,
                                            PlayOrigin::Jingle};

struct Column {
    enum Place { Start, Origin, Player, Artist, Title, Length, Played, Path, Count };
};

QStringList Headers() {
    return {QStringLiteral("Beginn"), QStringLiteral("Art"),   QStringLiteral("Player"),   QStringLiteral("Interpret"),
            QStringLiteral("Titel"),  QStringLiteral("Länge"), QStringLiteral("Gespielt"), QStringLiteral("Datei")};
}

QString NumberText(int number, int none) {
    return number == none ? QString() : QString::number(number);
}

QString LineOf(const PlayedTitle& title) {
    return CsvText::Line({title.start.toString(Qt::ISODate), OriginText(title.origin), NumberText(title.player, 0),
                          title.artist, title.title, NumberText(title.length, 0), NumberText(title.played, -1),
                          title.path});
}

int Number(const QString& text, int none) {
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    return isNumber ? number : none;
}

std::optional<PlayedTitle> TitleOf(const QString& line) {
    const QStringList fields = CsvText::Fields(line);
    const QDateTime start = QDateTime::fromString(fields.at(Column::Start), Qt::ISODate);
    if (fields.size() != Column::Count || !start.isValid())
        return std::nullopt;
    const auto* const origin = std::find_if(origins.begin(), origins.end(), [&fields](PlayOrigin candidate) {
        return OriginText(candidate) == fields.at(Column::Origin);
    });
    return PlayedTitle{start,
                       origin == origins.end() ? PlayOrigin::Player : *origin,
                       Number(fields.at(Column::Player), 0),
                       fields.at(Column::Artist),
                       fields.at(Column::Title),
                       Number(fields.at(Column::Length), 0),
                       Number(fields.at(Column::Played), -1),
                       fields.at(Column::Path)};
}

bool IsSamePlay(const PlayedTitle& left, const PlayedTitle& right) {
    return left.start == right.start && left.player == right.player && left.path == right.path;
}

bool EndsInsideLine(QFile& file) {
    char last = '\n';
    return file.size() > 0 && file.seek(file.size() - 1) && file.getChar(&last) && last != '\n';
}

/** The disk may take its time; the music does not wait for it. */
BackgroundWorker::Answer Sync(const QString& path) {
    QFile file(path);
#ifdef Q_OS_UNIX
    if (file.open(QIODevice::ReadOnly))
        ::fsync(file.handle());
#endif
    return {};
}

QStringList ShownFields(const PlayedTitle& title) {
    return {title.start.toString(QStringLiteral("dd.MM.yyyy HH:mm:ss")),
            OriginText(title.origin),
            NumberText(title.player, 0),
            title.artist,
            title.title,
            title.length > 0 ? PlayTime::Format(title.length) : QString(),
            title.played >= 0 ? PlayTime::Format(title.played) : QString(),
            title.path};
}

} // namespace

QString OriginText(PlayOrigin origin) {
    switch (origin) {
    case PlayOrigin::Wish:
        return QStringLiteral("Wunsch");
    case PlayOrigin::Automatic:
        return QStringLiteral("Automatik");
    case PlayOrigin::Jingle:
        return QStringLiteral("Jingle");
    case PlayOrigin::Player:
        break;
    }
    return QStringLiteral("Player");
}

EveningLog::EveningLog(QString folder) : folder_(std::move(folder)) {}

bool EveningLog::Write(const PlayedTitle& title) {
    const QString path = PathOf(EveningOf(title.start));
    QFile file(path);
    if (!QDir().mkpath(folder_) || !file.open(QIODevice::ReadWrite | QIODevice::Append | QIODevice::Unbuffered))
        return false;
    const bool isNew = file.size() == 0;
    QByteArray bytes = isNew ? CsvText::Document({Headers()}) : EndsInsideLine(file) ? cutOff + "\r\n" : QByteArray();
    bytes += LineOf(title).toUtf8() + "\r\n";
    if (file.write(bytes) != bytes.size())
        return false;
    syncer_.Do([path] { return Sync(path); });
    return true;
}

QList<QDate> EveningLog::Evenings() const {
    QList<QDate> evenings;
    const QStringList names = QDir(folder_).entryList({QStringLiteral("*.csv")}, QDir::Files);
    for (const QString& name : names) {
        if (const QDate date = QDate::fromString(name.chopped(4), nameFormat); date.isValid())
            evenings.prepend(date);
    }
    std::sort(evenings.rbegin(), evenings.rend());
    return evenings;
}

QList<PlayedTitle> EveningLog::Read(const QDate& evening) const {
    QList<PlayedTitle> titles;
    QFile file(PathOf(evening));
    if (!file.open(QIODevice::ReadOnly))
        return titles;
    QList<QByteArray> lines = file.readAll().split('\n');
    lines.removeLast(); // empty, or cut off
    for (const QByteArray& line : lines) {
        const QByteArray text = line.trimmed();
        const auto title = text.endsWith(cutOff) ? std::nullopt : TitleOf(QString::fromUtf8(text));
        if (!title)
            continue;
        const auto earlier = std::find_if(titles.rbegin(), titles.rend(),
                                          [&title](const PlayedTitle& one) { return IsSamePlay(one, *title); });
        if (earlier == titles.rend())
            titles.append(*title);
        else
            *earlier = *title;
    }
    std::stable_sort(titles.begin(), titles.end(),
                     [](const PlayedTitle& left, const PlayedTitle& right) { return left.start < right.start; });
    return titles;
}

QDateTime EveningLog::StartAt(const QDateTime& moment) {
    return moment.addMSecs(-moment.time().msec());
}

QDate EveningLog::EveningOf(const QDateTime& moment) {
    return moment.time().hour() < eveningBegins ? moment.date().addDays(-1) : moment.date();
}

QByteArray EveningLog::Csv(const QList<PlayedTitle>& titles) {
    QList<QStringList> rows{Headers()};
    for (const PlayedTitle& title : titles)
        rows.append(ShownFields(title));
    return CsvText::Document(rows);
}

QByteArray EveningLog::Text(const QDate& evening, const QList<PlayedTitle>& titles) {
    QString text = QStringLiteral("Gespielte Titel am %1\r\n\r\n").arg(evening.toString(QStringLiteral("dd.MM.yyyy")));
    for (const PlayedTitle& title : titles) {
        const QString name = title.artist.isEmpty() ? title.title : title.artist + QStringLiteral(" - ") + title.title;
        text += title.start.toString(QStringLiteral("HH:mm:ss  ")) + OriginText(title.origin).leftJustified(11) + name;
        text += title.played >= 0 ? QStringLiteral(" (%1)\r\n").arg(PlayTime::Format(title.played))
                                  : QStringLiteral("\r\n");
    }
    return text.toUtf8();
}

QString EveningLog::PathOf(const QDate& evening) const {
    return folder_ + u'/' + evening.toString(nameFormat) + QStringLiteral(".csv");
}

} // namespace kalvo
