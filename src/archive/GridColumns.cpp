#include "archive/GridColumns.h"

#include "base/Settings.h"

#include <array>

namespace kalvo::GridColumns {

namespace {

constexpr int widestTwips = widestPixels * twipsPerPixel;
constexpr int narrowestTwips = narrowestPixels * twipsPerPixel;
const QString missing = QStringLiteral("Fehler");

QString Section(qsizetype column) {
    return QStringLiteral("MA%1").arg(column);
}

/** Wide enough for the caption with its mark; of the text fields in creation order. */
constexpr std::array<double, kTextFields.size()> widths = {14, 12, 10.5, 7, 7, 4.6, 4.6, 16, 8, 10.4, 5, 4.6};

int DefaultWidth(ArchiveField field, int fontHeight) {
    const auto place = static_cast<std::size_t>(field) - static_cast<std::size_t>(kTextFields.front());
    return qRound(widths[place] * fontHeight) * twipsPerPixel;
}

/** What a section holds; no field where it names none of the grid's. */
struct StoredColumn {
    std::optional<ArchiveField> field;
    QString caption;
    int width;
    bool visible;
};

/** Old files name the caption alone. */
std::optional<ArchiveField> StoredField(const Settings& settings, const QString& section) {
    const QString name = settings.GetSetting(section, QStringLiteral("DataField"), QString());
    return name.isEmpty() ? FieldOfCaption(settings.GetSetting(section, QStringLiteral("Caption"), QString()))
                          : FieldOfName(name);
}

StoredColumn ReadOne(const Settings& settings, qsizetype column, QList<ArchiveField>& left) {
    const QString section = Section(column);
    StoredColumn read{StoredField(settings, section), settings.GetSetting(section, QStringLiteral("Caption"), missing),
                      settings.GetNumber(section, QStringLiteral("Width"), 500),
                      settings.GetSwitch(section, QStringLiteral("Visible"), true)};
    if (read.field && !left.removeOne(*read.field))
        read.field.reset();
    return read;
}

QString UsableCaption(ArchiveField field, const QString& wanted) {
    const QString caption = wanted.simplified();
    return !HasFreeCaption(field) || caption.isEmpty() || caption == missing ? FieldCaption(field) : caption;
}

} // namespace

bool HasFreeCaption(ArchiveField field) {
    return field < ArchiveField::Extra1;
}

QList<GridColumn> Defaults(int fontHeight) {
    QList<GridColumn> columns;
    for (const ArchiveField field : kTextFields)
        columns.append({field, FieldCaption(field), DefaultWidth(field, fontHeight), true});
    return columns;
}

QList<GridColumn> Read(const Settings& settings, int fontHeight) {
    if (settings.GetSetting(Section(kTextFields.size() - 1), QStringLiteral("Caption"), missing) == missing)
        return Defaults(fontHeight);
    // All sections are read first: a damaged one must not take the field that a later one names.
    QList<ArchiveField> left(kTextFields.begin(), kTextFields.end());
    QList<StoredColumn> stored;
    for (std::size_t i = 0; i < kTextFields.size(); ++i)
        stored.append(ReadOne(settings, static_cast<qsizetype>(i), left));
    QList<GridColumn> columns;
    for (const StoredColumn& column : stored) {
        const ArchiveField field = column.field ? *column.field : left.takeFirst();
        const QString caption = column.field ? column.caption : QString(); // or it would stand over another field
        const bool sane = column.width >= narrowestTwips && column.width <= widestTwips;
        columns.append({field, UsableCaption(field, caption), sane ? column.width : DefaultWidth(field, fontHeight),
                        column.visible});
    }
    if (VisibleFields(columns).isEmpty())
        columns.first().visible = true;
    return columns;
}

void Write(Settings& settings, const QList<GridColumn>& columns) {
    const Settings::Pass pass(settings);
    for (qsizetype i = 0; i < columns.size(); ++i) {
        const QString section = Section(i);
        settings.PutSetting(section, QStringLiteral("Caption"), UsableCaption(columns[i].field, columns[i].caption));
        settings.PutNumber(section, QStringLiteral("Width"), columns[i].width);
        settings.PutSwitch(section, QStringLiteral("Visible"), columns[i].visible);
        settings.PutSetting(section, QStringLiteral("DataField"), FieldName(columns[i].field));
    }
}

QList<ArchiveField> VisibleFields(const QList<GridColumn>& columns) {
    QList<ArchiveField> fields;
    for (const GridColumn& column : columns) {
        if (column.visible)
            fields.append(column.field);
    }
    return fields;
}

} // namespace kalvo::GridColumns
