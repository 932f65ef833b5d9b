#include "archive/ArchiveStatements.h"

namespace kalvo::ArchiveStatements {

namespace {

using namespace Qt::StringLiterals;

QString WithoutApostrophes(QString text) {
    return text.replace(u'\'', u'*');
}

/** " Titel Like '*abc*' or  Interpret Like '*abc*'" for the text abc. */
QString AnyColumnLike(const QString& text, const QList<ArchiveField>& visible) {
    const QString pattern = WithoutApostrophes(text) + u"*"_s;
    QString condition;
    for (const ArchiveField field : visible)
        condition += u" "_s + FieldName(field) + u" Like '*"_s + pattern + u"'"_s + u" or "_s;
    condition.chop(4);
    return condition;
}

QString Filtered(const QString& text, const QList<ArchiveField>& visible, const QString& order) {
    return u"SELECT * FROM Daten  Where "_s + AnyColumnLike(text, visible) + u"Order By "_s + order;
}

} // namespace

QString Default() {
    return u"Select * From Daten Order By Interpret, Titel"_s;
}

QString All() {
    return u"SELECT * FROM Daten Order By Interpret, Titel"_s;
}

QString QuickSearch(const QString& text, const QList<ArchiveField>& visible) {
    return visible.isEmpty() ? Default() : Filtered(text, visible, u"Interpret, Titel"_s);
}

QString Sorted(ArchiveField field, bool descending) {
    const QString tail = field == ArchiveField::Album ? u", Album, Extra3"_s : u", Interpret, Titel"_s;
    return u"Select * From Daten Order By "_s + FieldName(field) + (descending ? u" DESC"_s : QString()) + tail;
}

QString SortedSearch(const QString& text, const QList<ArchiveField>& visible, ArchiveField field, bool descending) {
    if (field == ArchiveField::Extra2 || field == ArchiveField::Extra3)
        return {};
    if (visible.isEmpty())
        return Sorted(field, descending);
    return Filtered(text, visible, FieldName(field) + (descending ? u" DESC"_s : QString()) + u", Interpret, Titel"_s);
}

QString TreeValue(ArchiveField field, const QString& value) {
    const QString comparison = value.contains(u'\'') ? u" Like '"_s : u" = '"_s;
    return u"SELECT * FROM Daten  Where "_s + FieldName(field) + comparison + WithoutApostrophes(value) +
           u"' Order By Interpret, Titel"_s;
}

QString ColumnValue(ArchiveField field, const QString& value) {
    return u"SELECT * FROM Daten  WHERE "_s + FieldName(field) + u" Like '"_s + WithoutApostrophes(value) +
           u"'Order By Interpret, Titel"_s;
}

QString DuplicateCheck(const QString& path) {
    return u"SELECT * FROM Daten  WHERE Pfad Like '"_s + WithoutApostrophes(path) + u"'"_s;
}

QString SearchField(const QString& text, ArchiveField field) {
    if (text.isEmpty())
        return {};
    const QString name = field == ArchiveField::Extra1 ? u"extra1"_s : FieldName(field);
    return u"SELECT * FROM Daten  WHERE "_s + name + u" Like '*"_s + WithoutApostrophes(text) +
           u"*'Order By Interpret, Titel"_s;
}

QString Categories() {
    return u"SELECT * FROM Daten ORDER BY Interpret"_s;
}

QString DuplicateCandidates() {
    return u"SELECT * FROM Daten ORDER BY Titel"_s;
}

QString FileNameDuplicates(const QString& key) {
    return u"SELECT * FROM Daten WHERE Pfad LIKE '*"_s + WithoutApostrophes(key) + u"*' ORDER BY Pfad"_s;
}

QString TitleDuplicates(const QString& key) {
    return u"SELECT * FROM Daten WHERE Titel LIKE '"_s + WithoutApostrophes(key) + u"' ORDER BY Titel"_s;
}

QString DrawnTitles(ArchiveField field, const QString& value) {
    return u"SELECT * FROM Daten WHERE "_s + FieldName(field) + u" Like '*"_s + WithoutApostrophes(value) +
           u"*'Order By Interpret, Titel"_s;
}

QString PathCriterion(const QString& path) {
    return u"Pfad Like '"_s + WithoutApostrophes(path) + u"'"_s;
}

} // namespace kalvo::ArchiveStatements
