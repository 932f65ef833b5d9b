#include "archive/GridColumns.h"

#include "base/Settings.h"

#include <QHash>

namespace kalvo::GridColumns {

namespace {

constexpr int widestTwips = 4000 * twipsPerPixel;
constexpr int narrowestTwips = 8 * twipsPerPixel;

QString Section(qsizetype column) { return QStringLiteral("MA%1").arg(column); }

double WidthInFontHeights(const QString& field) {
    static const QHash<QString, double> widths{
        {QStringLiteral("Titel"), 14},    {QStringLiteral("Interpret"), 12}, {QStringLiteral("Album"), 10.5},
        {QStringLiteral("Bewertung"), 7}, {QStringLiteral("Stil"), 7},       {QStringLiteral("Zeit"), 4.3},
        {QStringLiteral("Jahr"), 4.3},    {QStringLiteral("Pfad"), 16},      {QStringLiteral("Extra1"), 8},
        {QStringLiteral("Extra2"), 10},   {QStringLiteral("Extra3"), 4.8},   {QStringLiteral("Extra4"), 4.3}};
    return widths.value(field, 7);
}

int DefaultWidth(const QString& field, int fontHeight) {
    return qRound(WidthInFontHeights(field) * fontHeight) * twipsPerPixel;
}

GridColumn ReadOne(const Settings& settings, qsizetype column, int fontHeight) {
    const QString section = Section(column);
    GridColumn read;
    read.field = settings.GetSetting(section, QStringLiteral("DataField"), QString());
    read.width = settings.GetNumber(section, QStringLiteral("Width"), 500);
    read.visible = settings.GetSwitch(section, QStringLiteral("Visible"), true);
    if (read.width < narrowestTwips || read.width > widestTwips)
        read.width = DefaultWidth(read.field, fontHeight);
    return read;
}

/** Two passes, so that a damaged section does not take a field that a later one names. */
void GiveEveryFieldOnce(QList<GridColumn>& columns) {
    QStringList left = Fields();
    for (GridColumn& column : columns) {
        if (!left.removeOne(column.field))
            column.field.clear();
    }
    for (GridColumn& column : columns) {
        if (column.field.isEmpty())
            column.field = left.takeFirst();
    }
}

} // namespace

const QStringList& Fields() {
    static const QStringList fields{QStringLiteral("Titel"),  QStringLiteral("Interpret"), QStringLiteral("Album"),
                                    QStringLiteral("Bewertung"), QStringLiteral("Stil"),   QStringLiteral("Zeit"),
                                    QStringLiteral("Jahr"),   QStringLiteral("Pfad"),      QStringLiteral("Extra1"),
                                    QStringLiteral("Extra2"), QStringLiteral("Extra3"),    QStringLiteral("Extra4")};
    return fields;
}

QString Caption(const QString& field) {
    static const QHash<QString, QString> captions{{QStringLiteral("Extra1"), QStringLiteral("Kommentar")},
                                                  {QStringLiteral("Extra2"), QStringLiteral("Zuletzt Gespielt")},
                                                  {QStringLiteral("Extra3"), QStringLiteral("Track")},
                                                  {QStringLiteral("Extra4"), QStringLiteral("BPM")}};
    return captions.value(field, field);
}

QList<GridColumn> Defaults(int fontHeight) {
    QList<GridColumn> columns;
    for (const QString& field : Fields())
        columns.append({field, DefaultWidth(field, fontHeight), true});
    return columns;
}

QList<GridColumn> Read(const Settings& settings, int fontHeight) {
    const QString missing = QStringLiteral("Fehler");
    if (settings.GetSetting(Section(Fields().size() - 1), QStringLiteral("Caption"), missing) == missing)
        return Defaults(fontHeight);
    QList<GridColumn> columns;
    for (qsizetype i = 0; i < Fields().size(); ++i)
        columns.append(ReadOne(settings, i, fontHeight));
    GiveEveryFieldOnce(columns);
    if (VisibleFields(columns).isEmpty())
        columns.first().visible = true;
    return columns;
}

void Write(Settings& settings, const QList<GridColumn>& columns) {
    const Settings::Pass pass(settings);
    for (qsizetype i = 0; i < columns.size(); ++i) {
        const QString section = Section(i);
        settings.PutSetting(section, QStringLiteral("Caption"), Caption(columns[i].field));
        settings.PutNumber(section, QStringLiteral("Width"), columns[i].width);
        settings.PutSwitch(section, QStringLiteral("Visible"), columns[i].visible);
        settings.PutSetting(section, QStringLiteral("DataField"), columns[i].field);
    }
}

QStringList VisibleFields(const QList<GridColumn>& columns) {
    QStringList fields;
    for (const GridColumn& column : columns) {
        if (column.visible)
            fields.append(column.field);
    }
    return fields;
}

} // namespace kalvo::GridColumns
