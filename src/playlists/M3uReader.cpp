#include "playlists/M3uReader.h"

#include "base/AnsiText.h"
#include "base/FileName.h"
#include "playlists/DisplayName.h"

#include <QHash>
#include <QStringDecoder>
#include <QStringList>
#include <QUrl>

#include <algorithm>
#include <optional>

namespace kalvo {

namespace {

bool Contains(const QString& text, QLatin1String piece) {
    return text.contains(piece, Qt::CaseInsensitive);
}

QString WideText(const QByteArray& bytes, QStringDecoder::Encoding encoding) {
    QStringDecoder decoder(encoding);
    return decoder.decode(bytes);
}

/** Each line is decoded for itself: files that several programs have written to mix encodings. */
QStringList LinesOf(const QByteArray& bytes) {
    QStringList lines;
    const auto separator = [](auto character) { return character == '\n' || character == '\r'; };
    if (bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF")) {
        const bool isLittle = bytes.startsWith("\xFF\xFE");
        QString text = WideText(bytes, isLittle ? QStringDecoder::Utf16LE : QStringDecoder::Utf16BE);
        lines = text.replace(u'\r', u'\n').split(u'\n', Qt::SkipEmptyParts);
    } else {
        qsizetype start = bytes.startsWith("\xEF\xBB\xBF") ? 3 : 0;
        while (start < bytes.size()) {
            const auto* const end = std::find_if(bytes.begin() + start, bytes.end(), separator);
            const qsizetype length = end - bytes.begin() - start;
            lines.append(AnsiText::Decode(bytes.mid(start, length)));
            start += length + 1;
        }
    }
    for (QString& line : lines)
        line = line.remove(QChar(QChar::ByteOrderMark)).trimmed();
    lines.removeAll(QString());
    return lines;
}

bool IsAbsolute(const QString& path) {
    return path.startsWith(u'/') || path.startsWith(QLatin1String("\\\\")) || (path.size() > 1 && path.at(1) == u':');
}

/** "file:///C:/a%20b.mp3" is "C:/a b.mp3", "file://server/x.mp3" a share. */
QString FromAddress(const QString& address) {
    QString path = QUrl::fromPercentEncoding(address.mid(5).toUtf8());
    if (path.startsWith(QLatin1String("//localhost/"), Qt::CaseInsensitive))
        path.remove(0, 11);
    else if (path.startsWith(QLatin1String("///")))
        path.remove(0, 2);
    if (path.size() > 2 && path.startsWith(u'/') && path.at(2) == u':')
        path.remove(0, 1);
    return path;
}

/** Full path of a title, none for what is not taken. */
std::optional<QString> TitlePath(const QString& line, const QString& folder) {
    if (Contains(line, QLatin1String("http")) || Contains(line, QLatin1String("www.")))
        return std::nullopt;
    QString path = line.startsWith(QLatin1String("file:"), Qt::CaseInsensitive) ? FromAddress(line) : line;
    const bool isOneLine = std::none_of(path.cbegin(), path.cend(), [](QChar c) { return c < u' '; });
    if (!isOneLine || !FileName::IsMusic(path)) // an address may hide a line end
        return std::nullopt;
    if (IsAbsolute(path))
        return path;
    const bool isForeign = !folder.contains(u'/') && folder.contains(u'\\');
    return folder + (isForeign ? path.replace(u'/', u'\\') : path.replace(u'\\', u'/'));
}

QList<PlaylistEntry> ReadPlain(const QStringList& lines, const QString& folder) {
    QList<PlaylistEntry> entries;
    for (const QString& line : lines) {
        const auto path = TitlePath(line, folder);
        if (path && !line.startsWith(u'#'))
            entries.append(EntryFromFile(*path));
    }
    return entries;
}

QList<PlaylistEntry> ReadExtended(const QStringList& lines, const QString& folder) {
    QList<PlaylistEntry> entries;
    std::optional<PlaylistEntry> told; // by the #EXTINF line before
    for (const QString& line : lines) {
        if (line.contains(QLatin1String("#EXTINF:"))) {
            const qsizetype colon = line.indexOf(u':');
            const qsizetype comma = line.indexOf(u',', colon);
            told.emplace();
            told->duration = (comma < 0 ? line.mid(colon + 1) : line.mid(colon + 1, comma - colon - 1)).trimmed();
            if (comma >= 0)
                SetFromDisplayName(*told, line.mid(comma + 1));
            continue;
        }
        const auto path = line.startsWith(u'#') ? std::nullopt : TitlePath(line, folder);
        if (!path)
            continue;
        PlaylistEntry entry = EntryFromFile(*path);
        if (told && !told->title.isEmpty()) {
            entry.title = told->title;
            entry.artist = told->artist;
        }
        if (told && !told->duration.isEmpty())
            entry.duration = told->duration;
        told.reset();
        entries.append(entry);
    }
    return entries;
}

/** What stands behind File, Title or Length: the keys of one title share it. */
QString NumberOf(const QString& key) {
    return key.mid(std::find_if(key.begin(), key.end(), [](QChar sign) { return sign.isDigit(); }) - key.begin());
}

QList<PlaylistEntry> ReadPls(const QStringList& lines, const QString& folder) {
    QList<PlaylistEntry> entries;
    QHash<QString, QString> names, lengths;
    QStringList numbers; // of the entries
    for (const QString& line : lines) {
        const qsizetype equals = line.indexOf(u'=');
        const QString key = line.left(equals);
        const QString value = line.mid(equals + 1).trimmed();
        if (equals < 0)
            continue;
        if (Contains(key, QLatin1String("File"))) {
            if (const auto path = TitlePath(value, folder)) {
                entries.append(EntryFromFile(*path));
                numbers.append(NumberOf(key));
            }
        } else if (Contains(key, QLatin1String("Title"))) {
            names.insert(NumberOf(key), value);
        } else if (Contains(key, QLatin1String("Length")) && value.toInt() > 0) {
            lengths.insert(NumberOf(key), value);
        }
    }
    for (qsizetype place = 0; place < entries.size(); ++place) {
        if (const QString name = names.value(numbers.at(place)); !name.isEmpty())
            SetFromDisplayName(entries[place], name);
        entries[place].duration = lengths.value(numbers.at(place), entries.at(place).duration);
    }
    return entries;
}

} // namespace

QList<PlaylistEntry> ReadM3u(const QByteArray& bytes, const QString& path) {
    const QStringList lines = LinesOf(bytes);
    const QString folder = FileName::Folder(path);
    const auto holds = [&lines](QLatin1String mark) {
        return std::any_of(lines.begin(), lines.end(), [mark](const QString& line) { return Contains(line, mark); });
    };
    if (holds(QLatin1String("#EXTM3U")) || holds(QLatin1String("#EXTINF")))
        return ReadExtended(lines, folder);
    return holds(QLatin1String("[playlist]")) ? ReadPls(lines, folder) : ReadPlain(lines, folder);
}

bool IsM3uName(const QString& path) {
    const QStringList endings{QStringLiteral(".m3u"), QStringLiteral(".m3u8"), QStringLiteral(".pls")};
    return std::any_of(endings.begin(), endings.end(),
                       [&path](const QString& ending) { return path.endsWith(ending, Qt::CaseInsensitive); });
}

} // namespace kalvo
