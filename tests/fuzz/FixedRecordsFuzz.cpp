// Record files: records that were read are written as the same values, in place, and the odd bytes at the end are kept.
// Input: record length, number of fields, their widths, record number, a byte each; then the file.

#include "FuzzInput.h"

#include "base/FixedRecords.h"

#include <QDir>
#include <QTemporaryDir>

using kalvo::FixedRecords;
using kalvo::Record;
using kalvo::fuzz::Require;

namespace {

constexpr int kMostFields = 8;

kalvo::RecordLayout TakeLayout(kalvo::fuzz::Input& input) {
    kalvo::RecordLayout layout;
    layout.length = 1 + input.Byte();
    int left = layout.length;
    for (int fields = input.Byte() % kMostFields; fields > 0; --fields) {
        const int width = input.Byte() % (left + 1);
        const int bytes = width == kalvo::RecordLayout::kNumber ? 2 : width;
        if (bytes > left)
            break;
        layout.fields.push_back(width);
        left -= bytes;
    }
    return layout;
}

QByteArray Content(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/** The odd bytes kept beside the file, which go with it. */
QByteArray TakeTail(const QTemporaryDir& folder) {
    QByteArray tail;
    for (const QString& name : QDir(folder.path()).entryList({QStringLiteral("*.rest-*")})) {
        tail += Content(folder.filePath(name));
        QFile::remove(folder.filePath(name));
    }
    return tail;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QTemporaryDir folder(QStringLiteral("/dev/shm/kalvo-XXXXXX"));
    static const kalvo::SystemClock clock;
    kalvo::fuzz::Input input(data, size);
    const kalvo::RecordLayout layout = TakeLayout(input);
    const int wanted = input.Byte();
    const QByteArray before = input.Rest();
    const QString path = folder.filePath(QStringLiteral("records"));
    kalvo::fuzz::WriteFile(path, before);
    FixedRecords records(path, layout, clock);
    const std::vector<Record> all = records.ReadAll();
    const auto count = static_cast<int>(all.size());
    Require(records.Count() == count && count == before.size() / layout.length, "only whole records count");
    for (const Record& record : all)
        Require(records.Unpack(records.Pack(record)) == record, "a record comes back");

    const int number = 1 + wanted % (count + 2); // up to one record is skipped
    const Record record = count > 0 ? all.back() : records.Unpack({});
    Require(records.Write(number, record), "a record is written");
    Require(records.Read(number) == record, "and read back");
    for (int other = 1; other <= count; ++other)
        Require(other == number || records.Read(other) == all[static_cast<std::size_t>(other - 1)], "others stay");
    const QByteArray tail = before.mid(static_cast<qsizetype>(count) * layout.length);
    Require(TakeTail(folder) == (number > count ? tail : QByteArray()), "odd bytes are kept when they are in the way");

    Require(records.WriteAll(all) && records.ReadAll() == all, "all records come back");
    Require(Content(path).size() == static_cast<qsizetype>(count) * layout.length, "and nothing else");
    TakeTail(folder);
    return 0;
}
