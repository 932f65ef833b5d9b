#include "archive/TitleRow.h"

#include "archive/ArchiveField.h"

namespace kalvo::TitleRow {

QStringList Pack(const TitleRecord& title) {
    QStringList packed{QString::number(title.Nr)};
    for (const ArchiveField field : kTextFields)
        packed.append(FieldText(title, field));
    return packed;
}

TitleRecord Unpack(const QStringList& texts) {
    TitleRecord title;
    title.Nr = texts.value(0).toLongLong();
    for (qsizetype i = 0; i < static_cast<qsizetype>(kTextFields.size()); ++i)
        FieldPlace(title, kTextFields[static_cast<std::size_t>(i)]) = texts.value(i + 1);
    return title;
}

} // namespace kalvo::TitleRow
