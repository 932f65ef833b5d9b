#include "base/FixedRecords.h"

#include "base/AnsiText.h"
#include "base/AtomicFile.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <algorithm>

namespace kalvo {

namespace {

constexpr int kNumberBytes = 2;

int WidthOf(int field) {
    return field == RecordLayout::kNumber ? kNumberBytes : field;
}

/** Blanks at both ends; not more, or a text that is 1252 as a whole could become UTF-8 and outgrow its field. */
QByteArray Trimmed(QByteArray bytes) {
    bytes.replace('\0', ' ');
    const auto isText = [](char byte) { return byte != ' '; };
    const auto first = std::find_if(bytes.cbegin(), bytes.cend(), isText);
    const auto last = std::find_if(bytes.crbegin(), bytes.crend(), isText).base();
    return first < last ? bytes.mid(first - bytes.cbegin(), last - first) : QByteArray();
}

QByteArray PackedText(QString text, int width) {
    text.replace(QChar(u'\0'), QChar(u' '));
    while (text.startsWith(u' '))
        text.remove(0, 1);
    while (text.endsWith(u' '))
        text.chop(1);
    return AnsiText::EncodeCut(text, width).leftJustified(width, ' ');
}

QByteArray PackedNumber(qint16 number) {
    QByteArray bytes(kNumberBytes, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

/** A name beside the file that nobody has yet. */
QString TailName(const QString& path, const Clock& clock) {
    const QString dated = path + clock.Now().toString(QStringLiteral("'.rest-'yyyyMMdd-HHmmss"));
    QString name = dated;
    for (int number = 2; QFileInfo::exists(name); ++number)
        name = dated + QStringLiteral("-%1").arg(number);
    return name;
}

} // namespace

FixedRecords::FixedRecords(QString path, RecordLayout layout, const Clock& clock)
    : path_(std::move(path)), layout_(std::move(layout)), clock_(clock) {}

int FixedRecords::Count() const {
    return IsUnreadable() ? 0 : static_cast<int>(QFileInfo(path_).size() / layout_.length);
}

std::optional<Record> FixedRecords::Read(int number) const {
    QFile file(path_);
    if (number < 1 || !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered) ||
        !file.seek(static_cast<qint64>(number - 1) * layout_.length))
        return std::nullopt;
    const QByteArray bytes = file.read(layout_.length);
    return bytes.size() == layout_.length ? std::optional(Unpack(bytes)) : std::nullopt;
}

std::vector<Record> FixedRecords::ReadAll() const {
    QFile file(path_);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = file.readAll();
    std::vector<Record> records;
    records.reserve(static_cast<std::size_t>(bytes.size() / layout_.length));
    for (qsizetype at = 0; at + layout_.length <= bytes.size(); at += layout_.length)
        records.push_back(Unpack(bytes.mid(at, layout_.length)));
    return records;
}

bool FixedRecords::IsDamaged() const {
    const auto isControl = [](QChar character) { return character < u' '; };
    const auto isDamaged = [isControl](const std::variant<qint16, QString>& value) {
        const auto* text = std::get_if<QString>(&value);
        return text != nullptr && std::any_of(text->begin(), text->end(), isControl);
    };
    const std::vector<Record> records = ReadAll();
    return std::any_of(records.begin(), records.end(), [isDamaged](const Record& record) {
        return std::any_of(record.begin(), record.end(), isDamaged);
    });
}

bool FixedRecords::Write(int number, const Record& record) {
    QFile file(path_);
    if (number < 1 || !file.open(QIODevice::ReadWrite | QIODevice::Unbuffered))
        return false;
    const bool grows = number > file.size() / layout_.length;
    if (grows && !KeepTail(file))
        return false;
    const qint64 before = file.size();
    const QByteArray bytes = Pack(record);
    if (file.seek(static_cast<qint64>(number - 1) * layout_.length) && file.write(bytes) == bytes.size())
        return true;
    if (grows)
        file.resize(before); // a full disk may have taken a piece of it
    return false;
}

bool FixedRecords::Append(const Record& record) {
    return !IsUnreadable() && Write(Count() + 1, record);
}

bool FixedRecords::WriteAll(const std::vector<Record>& records) {
    QFile file(path_);
    if (IsUnreadable() || (file.open(QIODevice::ReadOnly) && !KeepTail(file)))
        return false;
    file.close();
    QByteArray bytes;
    bytes.reserve(static_cast<qsizetype>(records.size()) * layout_.length);
    for (const Record& record : records)
        bytes += Pack(record);
    return WriteAtomically(path_, bytes);
}

QByteArray FixedRecords::Pack(const Record& record) const {
    QByteArray bytes;
    for (std::size_t i = 0; i < layout_.fields.size(); ++i) {
        const int field = layout_.fields[i];
        const auto* number = i < record.size() ? std::get_if<qint16>(&record[i]) : nullptr;
        const auto* text = i < record.size() ? std::get_if<QString>(&record[i]) : nullptr;
        bytes += field == RecordLayout::kNumber ? PackedNumber(number ? *number : qint16{0})
                                                : PackedText(text ? *text : QString(), field);
    }
    return bytes.leftJustified(layout_.length, '\0', true);
}

Record FixedRecords::Unpack(const QByteArray& bytes) const {
    Record record;
    record.reserve(layout_.fields.size());
    qsizetype at = 0;
    for (const int field : layout_.fields) {
        const QByteArray part = bytes.mid(at, WidthOf(field)).leftJustified(WidthOf(field), '\0');
        if (field == RecordLayout::kNumber)
            record.emplace_back(qFromLittleEndian<qint16>(part.constData()));
        else
            record.emplace_back(AnsiText::Decode(Trimmed(part)));
        at += WidthOf(field);
    }
    return record;
}

/** There, but not to be read: its records would be lost if it were replaced. */
bool FixedRecords::IsUnreadable() const {
    return QFileInfo::exists(path_) && !QFile(path_).open(QIODevice::ReadOnly);
}

bool FixedRecords::KeepTail(QFile& file) const {
    const qint64 whole = file.size() / layout_.length * layout_.length;
    if (whole == file.size())
        return true;
    if (!file.seek(whole) || !WriteAtomically(TailName(path_, clock_), file.readAll()))
        return false;
    return !file.isWritable() || file.resize(whole);
}

} // namespace kalvo
