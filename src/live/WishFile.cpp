#include "live/WishFile.h"

#include "base/AnsiText.h"
#include "base/FileName.h"

#include <algorithm>

namespace kalvo {

namespace {

constexpr int kRecordLength = 282;
constexpr int kPathWidth = 100, kDisplayWidth = 100, kGuestWidth = 60, kTimeWidth = 20;

/** The first field is not used. */
enum Field : std::size_t { Unused, Path, Display, Guest, Time };

RecordLayout WishLayout() {
    return {kRecordLength, {RecordLayout::kNumber, kPathWidth, kDisplayWidth, kGuestWidth, kTimeWidth}};
}

QString TextAt(const Record& record, Field field) {
    return std::get<QString>(record.at(field));
}

Record RecordOf(const Wish& wish) {
    return {qint16{0}, wish.path, wish.display, wish.guest, wish.time};
}

Wish WishOf(const Record& record) {
    return {TextAt(record, Path), TextAt(record, Display), TextAt(record, Guest), TextAt(record, Time)};
}

bool NamesAFile(const Wish& wish) {
    const auto isControl = [](QChar character) { return character < u' '; };
    return (wish.path.contains(u'/') || wish.path.contains(u'\\')) &&
           std::none_of(wish.path.begin(), wish.path.end(), isControl);
}

QString Stored(const QString& text, int width) {
    return AnsiText::Decode(AnsiText::EncodeCut(text.trimmed(), width)).trimmed();
}

} // namespace

QString WishDisplay(const QString& artist, const QString& title) {
    return artist + QStringLiteral(" - ") + title;
}

WishNames NamesOfWish(const QString& display) {
    const QString separator = QStringLiteral(" - ");
    if (display.startsWith(separator.mid(1))) // there was no artist, and fields are trimmed
        return {{}, display.mid(separator.size() - 1)};
    const qsizetype at = display.indexOf(separator);
    return at < 0 ? WishNames{{}, display} : WishNames{display.left(at), display.mid(at + separator.size())};
}

QString ShownWish(const Wish& wish) {
    const bool isNameless = wish.display.isEmpty() || wish.display == WishDisplay({}, {}).trimmed();
    return isNameless ? FileName::WithoutMusicExtension(FileName::Last(wish.path)) : wish.display;
}

QString WishTime(const QDateTime& moment) {
    return moment.toString(QStringLiteral("dd.MM.yyyy ")) + moment.toString(QStringLiteral("HH:mm"));
}

WishFile::WishFile(const QString& path, const Clock& clock) : records_(path, WishLayout(), clock) {}

bool WishFile::IsDamaged() const {
    const QList<Wish> wishes = Read();
    return records_.Count() > 0 && std::none_of(wishes.begin(), wishes.end(), NamesAFile);
}

QList<Wish> WishFile::Read() const {
    QList<Wish> wishes;
    for (const Record& record : records_.ReadAll()) {
        if (const Wish wish = WishOf(record); !wish.path.isEmpty() || !wish.display.isEmpty())
            wishes.append(wish);
    }
    return wishes;
}

bool WishFile::Append(const Wish& wish) {
    return records_.Append(RecordOf(wish));
}

bool WishFile::Write(const QList<Wish>& wishes) {
    std::vector<Record> records;
    records.reserve(static_cast<std::size_t>(wishes.size()));
    for (const Wish& wish : wishes)
        records.push_back(RecordOf(wish));
    return records_.WriteAll(records);
}

QString WishFile::StoredPath(const QString& path) {
    return Stored(path, kPathWidth);
}

QString WishFile::StoredDisplay(const QString& display) {
    return Stored(display, kDisplayWidth);
}

bool WishFile::MayBeCut(const QString& path) {
    constexpr int longestCharacter = 4; // bytes: a cut never splits one
    return AnsiText::Encode(path).size() > kPathWidth - longestCharacter;
}

} // namespace kalvo
