#include "tags/DiscEntry.h"

#include "base/AnsiText.h"

#include <QHash>

#include <algorithm>

namespace kalvo::DiscText {

namespace {

constexpr qsizetype kLineLength = 80;
constexpr int kFramesPerSecond = 75;
constexpr int kMostEntries = 99;
const QString kSeparator = QStringLiteral(" / "); // between artist and title

QString Unescaped(const QString& text) {
    QString plain;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar next = i + 1 < text.size() ? text[i + 1] : QChar();
        const bool known = text[i] == u'\\' && (next == u'n' || next == u't' || next == u'\\');
        if (known)
            ++i;
        plain.append(!known ? text[i] : next == u'n' ? QChar(u'\n') : next == u't' ? QChar(u'\t') : next);
    }
    return plain;
}

/** In pieces that must not be cut: a character, a pair of surrogates, an escape. */
QStringList EscapedPieces(const QString& text) {
    QStringList pieces;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c == u'\\' || c == u'\n' || c == u'\t')
            pieces.append(c == u'\n'   ? QStringLiteral("\\n")
                          : c == u'\t' ? QStringLiteral("\\t")
                                       : QStringLiteral("\\\\"));
        else if (c.isHighSurrogate() && i + 1 < text.size())
            pieces.append(text.mid(i++, 2));
        else if (c != u'\r')
            pieces.append(c);
    }
    return pieces;
}

void AppendValue(QString& text, const QString& key, const QString& value) {
    QString line = key + u'=';
    const qsizetype empty = line.size();
    for (const QString& piece : EscapedPieces(value)) {
        if (line.size() > empty && line.size() + piece.size() > kLineLength) {
            text += line + u'\n';
            line.truncate(empty);
        }
        line += piece;
    }
    text += line + u'\n';
}

QList<QByteArray> Lines(QByteArray bytes) {
    if (bytes.startsWith("\xEF\xBB\xBF"))
        bytes.remove(0, 3);
    bytes.replace("\r\n", "\n").replace('\r', '\n');
    return bytes.split('\n');
}

/** The number at the end of "TTITLE12"; -1 when there is none, or none that a disc can have. */
int TrackNumber(const QString& key, QLatin1String prefix) {
    if (!key.startsWith(prefix))
        return -1;
    bool valid = false;
    const int number = QStringView(key).mid(prefix.size()).toInt(&valid);
    return valid && number >= 0 && number < kMostEntries && key == prefix + QString::number(number) ? number : -1;
}

class Parser {
public:
    std::optional<DiscEntry> Parse(const QByteArray& bytes);

private:
    void Comment(const QString& text);
    bool Offset(const QString& text);
    void Collect(const QByteArray& line);
    void Assign(const QString& key, const QString& value);
    DiscTrack& Track(int number);

    DiscEntry entry_;
    bool inOffsets_ = false;
    QList<QByteArray> keys_; // in their order
    QHash<QByteArray, QByteArray> values_;
};

std::optional<DiscEntry> Parser::Parse(const QByteArray& bytes) {
    const QList<QByteArray> lines = Lines(bytes);
    if (!lines.first().startsWith("# xmcd"))
        return {};
    for (const QByteArray& line : lines.mid(1)) {
        if (line.startsWith('#'))
            Comment(AnsiText::Decode(line.mid(1)));
        else
            Collect(line);
    }
    // Only now: a character may have been cut between two lines.
    for (const QByteArray& key : std::as_const(keys_))
        Assign(AnsiText::Decode(key), Unescaped(AnsiText::Decode(values_.value(key))));
    if (entry_.discIds.isEmpty())
        return {};
    return entry_;
}

void Parser::Comment(const QString& text) {
    const QString line = text.trimmed();
    const auto after = [&line](const QString& start) {
        return line.startsWith(start) ? line.mid(start.size()).trimmed() : QString();
    };
    if (line.startsWith(QStringLiteral("Track frame offsets"))) {
        inOffsets_ = true;
        return;
    }
    if (inOffsets_ && (line.isEmpty() || Offset(line)))
        return;
    inOffsets_ = false;
    if (const QString length = after(QStringLiteral("Disc length:")); !length.isEmpty())
        entry_.toc.leadOut = length.section(u' ', 0, 0).toInt() * kFramesPerSecond;
    else if (const QString revision = after(QStringLiteral("Revision:")); !revision.isEmpty())
        entry_.revision = revision.toInt();
    else if (!line.isEmpty())
        entry_.comments.append(line);
}

bool Parser::Offset(const QString& text) {
    bool valid = false;
    const int offset = text.toInt(&valid);
    if (valid && entry_.toc.offsets.size() < kMostEntries)
        entry_.toc.offsets.append(offset);
    return valid;
}

void Parser::Collect(const QByteArray& line) {
    const qsizetype equals = line.indexOf('=');
    if (equals > 0) {
        const QByteArray key = line.left(equals).trimmed();
        if (!values_.contains(key))
            keys_.append(key);
        values_[key] += line.mid(equals + 1);
    } else if (!line.trimmed().isEmpty()) {
        entry_.comments.append(AnsiText::Decode(line.trimmed()));
    }
}

DiscTrack& Parser::Track(int number) {
    while (entry_.tracks.size() <= number)
        entry_.tracks.append(DiscTrack());
    return entry_.tracks[number];
}

void Parser::Assign(const QString& key, const QString& value) {
    if (key == u"DISCID") {
        for (const QString& id : value.split(u',', Qt::SkipEmptyParts)) {
            if (const QString lower = id.trimmed().toLower(); IsDiscId(lower))
                entry_.discIds.append(lower);
        }
    } else if (key == u"DTITLE") {
        const qsizetype at = value.indexOf(kSeparator);
        entry_.artist = (at < 0 ? value : value.left(at)).trimmed();
        entry_.title = (at < 0 ? value : value.mid(at + kSeparator.size())).trimmed();
    } else if (key == u"DYEAR") {
        entry_.year = value;
    } else if (key == u"DGENRE") {
        entry_.genre = value;
    } else if (key == u"EXTD") {
        entry_.extended = value;
    } else if (key == u"PLAYORDER") {
        entry_.playOrder = value;
    } else if (const int titled = TrackNumber(key, QLatin1String("TTITLE")); titled >= 0) {
        Track(titled).title = value;
    } else if (const int extended = TrackNumber(key, QLatin1String("EXTT")); extended >= 0) {
        Track(extended).extended = value;
    } else {
        entry_.more.append({key, value});
    }
}

QString Head(const DiscEntry& entry) {
    QString text = QStringLiteral("# xmcd\n#\n");
    if (!entry.toc.offsets.isEmpty()) {
        text += QStringLiteral("# Track frame offsets:\n");
        for (const int offset : entry.toc.offsets)
            text += QStringLiteral("#\t%1\n").arg(offset);
        text += QStringLiteral("#\n");
    }
    if (entry.toc.leadOut > 0)
        text += QStringLiteral("# Disc length: %1 seconds\n#\n").arg(entry.toc.Seconds());
    text += QStringLiteral("# Revision: %1\n").arg(entry.revision);
    for (const QString& comment : entry.comments)
        text += QStringLiteral("# ") + comment + u'\n';
    return text + QStringLiteral("#\n");
}

} // namespace

std::optional<DiscEntry> Parse(const QByteArray& bytes) {
    return Parser().Parse(bytes);
}

QByteArray Encode(const DiscEntry& entry) {
    QString text = Head(entry);
    const bool oneName = entry.artist == entry.title;
    AppendValue(text, QStringLiteral("DISCID"), entry.discIds.join(u','));
    AppendValue(text, QStringLiteral("DTITLE"), oneName ? entry.title : entry.artist + kSeparator + entry.title);
    AppendValue(text, QStringLiteral("DYEAR"), entry.year);
    AppendValue(text, QStringLiteral("DGENRE"), entry.genre);
    for (qsizetype i = 0; i < entry.tracks.size(); ++i)
        AppendValue(text, QStringLiteral("TTITLE%1").arg(i), entry.tracks[i].title);
    AppendValue(text, QStringLiteral("EXTD"), entry.extended);
    for (qsizetype i = 0; i < entry.tracks.size(); ++i)
        AppendValue(text, QStringLiteral("EXTT%1").arg(i), entry.tracks[i].extended);
    AppendValue(text, QStringLiteral("PLAYORDER"), entry.playOrder);
    for (const auto& [key, value] : entry.more)
        AppendValue(text, key, value);
    return text.toUtf8();
}

} // namespace kalvo::DiscText
