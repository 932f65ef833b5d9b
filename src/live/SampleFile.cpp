#include "live/SampleFile.h"

#include "base/AnsiText.h"
#include "base/FileName.h"

#include <algorithm>

namespace kalvo {

namespace {

RecordLayout SampleLayout() {
    return {172, {RecordLayout::kNumber, SampleSlot::kTitleWidth, SampleSlot::kPathWidth}};
}

} // namespace

bool SampleSlot::Fits(const QString& path) {
    return AnsiText::Encode(path).size() <= kPathWidth && !FileName::HasControls(path);
}

QString SampleSlot::CutTitle(const QString& title) {
    return AnsiText::Decode(AnsiText::EncodeCut(title, kTitleWidth));
}

SampleFile::SampleFile(const QString& path, const Clock& clock) : file_(path, SampleLayout(), clock) {}

bool SampleFile::IsDamaged(const QString& path, const Clock& clock) {
    return FixedRecords(path, SampleLayout(), clock).IsDamaged();
}

SampleSlots SampleFile::Read() const {
    const std::vector<Record> records = file_.ReadAll();
    SampleSlots slots;
    for (std::size_t pad = 0; pad < std::min(records.size(), slots.size()); ++pad)
        slots.at(pad) = {std::get<QString>(records[pad][1]), std::get<QString>(records[pad][2])};
    return slots;
}

bool SampleFile::Write(const SampleSlots& slots) {
    std::vector<Record> records = file_.ReadAll();
    records.resize(std::max(records.size(), slots.size()));
    for (std::size_t pad = 0; pad < slots.size(); ++pad)
        records[pad] = {static_cast<qint16>(pad + 1), slots.at(pad).title, slots.at(pad).path};
    return file_.WriteAll(records);
}

} // namespace kalvo
