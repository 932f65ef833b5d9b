#include "archive/GridColumns.h"

#include "base/Settings.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace kalvo::GridColumns {

namespace {

constexpr int widestTwips = widestPixels * twipsPerPixel;
constexpr int narrowestTwips = narrowestPixels * twipsPerPixel;
const QString missing = QStringLiteral("Fehler");

QString Section(qsizetype column) {
    return QStringLiteral("MA%1").arg(column);
}

/** Of the text fields in creation order. */
struct DefaultColumn {
    double width; ///< font heights; wide enough for the caption with its mark
    double share; ///< of the room that is left over
};
constexpr std::array<DefaultColumn, kTextFields.size()> defaults = {{{13, 0.3},
                                                                     {11, 0.2},
                                                                     {10, 0.2},
                                                                     {6.8, 0},
                                                                     {7.2, 0},
                                                                     {4.4, 0},
                                                                     {4.4, 0},
                                                                     {8.3, 0.2},
                                                                     {7.4, 0.1},
                                                                     {9.8, 0},
                                                                     {4.8, 0},
                                                                     {4.4, 0}}};

/** room: pixels that may be given away. */
int DefaultWidth(ArchiveField field, int fontHeight, int room = 0) {
    const auto place = static_cast<std::size_t>(field) - static_cast<std::size_t>(kTextFields.front());
    const DefaultColumn& column = defaults.at(place);
    return static_cast<int>(column.width * fontHeight + column.share * room) * twipsPerPixel;
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

QList<GridColumn> Defaults(int fontHeight, int width) {
    const double needed = std::accumulate(defaults.begin(), defaults.end(), 0.0,
                                          [](double sum, const DefaultColumn& one) { return sum + one.width; });
    const int room = std::max(0, width - static_cast<int>(needed * fontHeight));
    QList<GridColumn> columns;
    for (const ArchiveField field : kTextFields)
        columns.append({field, FieldCaption(field), DefaultWidth(field, fontHeight, room), true});
    return columns;
}

bool AreStored(const Settings& settings) {
    return settings.GetSetting(Section(kTextFields.size() - 1), QStringLiteral("Caption"), missing) != missing;
}

QList<GridColumn> Read(const Settings& settings, int fontHeight) {
    if (!AreStored(settings))
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
