#include "playlists/ChartsFile.h"

#include "base/AnsiText.h"

#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <array>
#include <limits>

namespace kalvo {

namespace {

constexpr int recordLength = 392;
constexpr int dateWidth = 30, pathWidth = 200, titleWidth = 50, artistWidth = 50, sortableWidth = 50;
constexpr int pathOffset = 2 + dateWidth;
constexpr qint64 blockBytes = qint64{1024} * recordLength;
constexpr qint16 mostPlays = std::numeric_limits<qint16>::max();

/** The fields in their order; the first is not ours, the last two bytes are unused. Both are kept as they are. */
enum Field : std::size_t { Unknown, Date, Path, Title, Artist, Total, Archive, Player1, Player2, Sortable, Unused };

RecordLayout Layout() {
    constexpr int number = RecordLayout::kNumber;
    return {
        recordLength,
        {number, dateWidth, pathWidth, titleWidth, artistWidth, number, number, number, number, sortableWidth, number}};
}

Record EmptyRecord(const QString& path, const QString& title, const QString& artist) {
    const qint16 none = 0;
    return {none, QString(), path, title, artist, none, none, none, none, QString(), none};
}

qint16 NumberAt(const Record& record, Field field) {
    return std::get<qint16>(record[field]);
}

QString TextAt(const Record& record, Field field) {
    return std::get<QString>(record[field]);
}

QString Trimmed(QStringView text) {
    while (text.startsWith(u' '))
        text = text.mid(1);
    while (text.endsWith(u' '))
        text.chop(1);
    return text.toString();
}

/** A text as it comes back from a field of this width. */
QString Stored(const QString& text, int width) {
    return Trimmed(AnsiText::Decode(AnsiText::EncodeCut(Trimmed(text), width)));
}

size_t HashOf(const QString& path) {
    return qHash(path.toUtf8());
}

/** The same of a path as it stands in its field; most are plain ASCII and need no decoding. */
size_t HashOfField(QByteArrayView field) {
    const auto isPadding = [](char byte) { return byte == ' ' || byte == '\0'; };
    while (!field.isEmpty() && isPadding(field.front()))
        field = field.sliced(1);
    while (!field.isEmpty() && isPadding(field.back()))
        field.chop(1);
    const bool isPlain = std::all_of(field.begin(), field.end(), [](char byte) { return byte > 0; });
    return isPlain ? qHash(field) : HashOf(AnsiText::Decode(field.toByteArray().replace('\0', ' ')));
}

Field FieldOf(PlaySource source) {
    return source == PlaySource::Player1 ? Player1 : source == PlaySource::Player2 ? Player2 : Archive;
}

void AddPlays(Record& record, Field field, int plays) {
    record[field] = static_cast<qint16>(std::min<int>(NumberAt(record, field) + plays, mostPlays));
    const int total = NumberAt(record, Player1) + NumberAt(record, Player2) + NumberAt(record, Archive);
    record[Total] = static_cast<qint16>(std::min<int>(total, mostPlays));
}

/** The plays of both, and the later date. */
void TakeUp(Record& record, const Record& other) {
    for (const Field field : {Archive, Player1, Player2})
        AddPlays(record, field, NumberAt(other, field));
    if (TextAt(other, Sortable) > TextAt(record, Sortable)) {
        record[Date] = other[Date];
        record[Sortable] = other[Sortable];
    }
}

void CountIn(Record& record, PlaySource source, const QDateTime& when) {
    AddPlays(record, FieldOf(source), 1);
    record[Date] = when.toString(QStringLiteral("dd.MM.yyyy, HH:mm")) + QStringLiteral(" Uhr");
    record[Sortable] = when.toString(QStringLiteral("yyyy.MM.dd, HH:mm"));
}

ChartEntry EntryOf(const Record& record, int number) {
    return {number,
            TextAt(record, Date),
            TextAt(record, Path),
            TextAt(record, Title),
            TextAt(record, Artist),
            NumberAt(record, Total),
            NumberAt(record, Archive),
            NumberAt(record, Player1),
            NumberAt(record, Player2),
            TextAt(record, Sortable)};
}

} // namespace

ChartsFile::ChartsFile(const QString& path, const Clock& clock) : path_(path), records_(path, Layout(), clock) {}

bool ChartsFile::IsDamaged() const {
    const auto namesAFile = [](const Record& record) {
        const QString path = TextAt(record, Path);
        const auto isControl = [](QChar character) { return character < u' '; };
        return (path.contains(u'/') || path.contains(u'\\')) && std::none_of(path.begin(), path.end(), isControl);
    };
    QFile file(path_);
    bool damaged = file.open(QIODevice::ReadOnly) && file.size() > 0;
    for (QByteArray bytes; damaged && (bytes = file.read(recordLength)).size() == recordLength;)
        damaged = !namesAFile(records_.Unpack(bytes));
    return damaged;
}

void ChartsFile::Prepare() {
    const Version version = VersionNow();
    if (version == known_)
        return;
    places_.clear();
    known_ = version;
    QFile file(path_);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return;
    places_.reserve(records_.Count());
    int number = 0;
    for (QByteArray block = file.read(blockBytes); block.size() >= recordLength; block = file.read(blockBytes)) {
        for (qsizetype at = 0; at + recordLength <= block.size(); at += recordLength)
            places_.insert(HashOfField(QByteArrayView(block).sliced(at + pathOffset, pathWidth)), ++number);
    }
}

bool ChartsFile::Count(PlaySource source, const QString& path, const QString& title, const QString& artist,
                       const QDateTime& when) {
    Prepare();
    const int found = Find(path, title);
    const std::optional<Record> stored = found > 0 ? records_.Read(found) : std::nullopt;
    Record record = stored ? *stored : EmptyRecord(path, title, artist);
    CountIn(record, source, when);
    if (!(stored ? records_.Write(found, record) : records_.Append(record)))
        return false;
    if (!stored)
        places_.insert(HashOf(Stored(path, pathWidth)), records_.Count());
    known_ = VersionNow();
    return true;
}

bool ChartsFile::Move(const QString& from, const QString& to, const QString& title) {
    Prepare();
    const int old = Find(from, title);
    std::optional<Record> record = old > 0 ? records_.Read(old) : std::nullopt;
    if (!record)
        return true;
    const int there = Find(to, title);
    const std::optional<Record> other = there > 0 && there != old ? records_.Read(there) : std::nullopt;
    if (other)
        TakeUp(*record, *other);
    (*record)[Path] = to;
    known_ = {}; // the places are read anew
    return records_.Write(old, *record) && (!other || Remove({there}));
}

QList<ChartEntry> ChartsFile::Entries() const {
    QList<ChartEntry> entries;
    const std::vector<Record> records = records_.ReadAll();
    entries.reserve(static_cast<qsizetype>(records.size()));
    for (const Record& record : records)
        entries.append(EntryOf(record, static_cast<int>(entries.size()) + 1));
    return entries;
}

std::optional<ChartEntry> ChartsFile::FindEntry(const QString& path, const QString& title) {
    Prepare();
    const int number = Find(path, title);
    const std::optional<Record> record = number > 0 ? records_.Read(number) : std::nullopt;
    return record ? std::optional(EntryOf(*record, number)) : std::nullopt;
}

bool ChartsFile::MayBeCut(const ChartEntry& entry) {
    constexpr int longestCharacter = 4; // bytes: a cut never splits one
    return AnsiText::Encode(entry.path).size() > pathWidth - longestCharacter;
}

bool ChartsFile::IsRecordOf(const ChartEntry& entry, const QString& path, const QString& title) {
    return entry.path == Stored(path, pathWidth) && entry.title == Stored(title, titleWidth);
}

bool ChartsFile::Remove(const QList<int>& numbers) {
    const QSet<int> removed(numbers.begin(), numbers.end());
    const std::vector<Record> records = records_.ReadAll();
    std::vector<Record> kept;
    for (std::size_t place = 0; place < records.size(); ++place) {
        if (!removed.contains(static_cast<int>(place) + 1))
            kept.push_back(records[place]);
    }
    return records_.WriteAll(kept);
}

bool ChartsFile::Clear() {
    return records_.WriteAll({});
}

ChartsFile::Version ChartsFile::VersionNow() const {
    const QFileInfo info(path_);
    return info.exists() ? Version{info.size(), info.lastModified()} : Version();
}

int ChartsFile::Find(const QString& path, const QString& title) const {
    const QString wanted = Stored(path, pathWidth);
    const bool isCut = wanted != Trimmed(path);
    const size_t hash = HashOf(wanted);
    int first = 0;
    for (auto place = places_.constFind(hash); place != places_.cend() && place.key() == hash; ++place) {
        const std::optional<Record> record = records_.Read(place.value());
        const bool isSame = record && TextAt(*record, Path) == wanted &&
                            (!isCut || TextAt(*record, Title) == Stored(title, titleWidth));
        if (isSame && (first == 0 || place.value() < first))
            first = place.value();
    }
    return first;
}

} // namespace kalvo
