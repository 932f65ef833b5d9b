#include "live/JingleFile.h"

#include <QFileInfo>

#include <algorithm>

namespace kalvo {

namespace {

constexpr int kWordWidth = 12; // mode, weekday
constexpr int kTimeWidth = 5;
constexpr qint16 kTrue = -1;

/** Where the fields of a record stand in its layout. */
constexpr std::size_t kModes = 1;
constexpr std::size_t kWeekdays = kModes + JingleRecord::kSlots;
constexpr std::size_t kTimes = kWeekdays + JingleRecord::kSlots;
constexpr std::size_t kPath = kTimes + JingleRecord::kSlots;
constexpr std::size_t kActive = kPath + 1;
constexpr std::size_t kFields = kActive + 1;

RecordLayout JingleLayout() {
    RecordLayout layout{299, {RecordLayout::kNumber}};
    for (const int width : {kWordWidth, kWordWidth, kTimeWidth})
        layout.fields.insert(layout.fields.end(), JingleRecord::kSlots, width);
    layout.fields.insert(layout.fields.end(), {JingleRecord::kPathWidth, RecordLayout::kNumber});
    return layout;
}

Record Packed(const JingleRecord& jingle) {
    Record record(kFields);
    record[0] = jingle.number;
    for (std::size_t slot = 0; slot < jingle.slots.size(); ++slot) {
        record[kModes + slot] = jingle.slots.at(slot).mode;
        record[kWeekdays + slot] = jingle.slots.at(slot).weekday;
        record[kTimes + slot] = jingle.slots.at(slot).time;
    }
    record[kPath] = jingle.path;
    record[kActive] = jingle.active ? kTrue : qint16{0};
    return record;
}

JingleRecord Unpacked(const Record& record) {
    JingleRecord jingle;
    jingle.number = std::get<qint16>(record[0]);
    for (std::size_t slot = 0; slot < jingle.slots.size(); ++slot) {
        jingle.slots.at(slot) = {std::get<QString>(record[kModes + slot]), std::get<QString>(record[kWeekdays + slot]),
                                 std::get<QString>(record[kTimes + slot])};
    }
    jingle.path = std::get<QString>(record[kPath]);
    jingle.active = std::get<qint16>(record[kActive]) != 0;
    return jingle;
}

const QString kSection = QStringLiteral("Termin-Play");

QString AfterTitleKey(std::size_t index) {
    return QStringLiteral("NachTitel%1").arg(index + 1);
}

} // namespace

JingleFile::JingleFile(const QString& path, Settings& settings, const Clock& clock)
    : path_(path), settings_(settings), file_(path, JingleLayout(), clock) {}

bool JingleFile::IsDamaged(const QString& path, const Clock& clock) {
    return FixedRecords(path, JingleLayout(), clock).IsDamaged();
}

JingleRecords JingleFile::Read() {
    if (!QFileInfo::exists(path_))
        file_.WriteAll({});
    const std::vector<Record> stored = file_.ReadAll();
    JingleRecords records;
    for (std::size_t i = 0; i < records.size(); ++i) {
        records.at(i).number = static_cast<qint16>(i + 1);
        if (i < stored.size())
            records.at(i) = Unpacked(stored[i]);
        records.at(i).afterTitle = settings_.GetSwitch(kSection, AfterTitleKey(i), false);
    }
    return records;
}

bool JingleFile::Write(const JingleRecords& records) {
    std::vector<Record> all = file_.ReadAll();
    all.resize(std::max(all.size(), records.size()));
    std::transform(records.begin(), records.end(), all.begin(), Packed);
    if (!file_.WriteAll(all))
        return false;
    const Settings::Pass pass(settings_);
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (records.at(i).afterTitle != settings_.GetSwitch(kSection, AfterTitleKey(i), false))
            settings_.PutSwitch(kSection, AfterTitleKey(i), records.at(i).afterTitle);
    }
    return true;
}

} // namespace kalvo
