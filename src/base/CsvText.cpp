#include "base/CsvText.h"

#include <algorithm>
#include <iterator>

namespace kalvo::CsvText {

namespace {

QString Quoted(QString field) {
    field.replace(u'\r', u' ').replace(u'\n', u' ');
    if (!field.contains(u';') && !field.contains(u'"'))
        return field;
    return u'"' + field.replace(QStringLiteral("\""), QStringLiteral("\"\"")) + u'"';
}

} // namespace

QString Line(const QStringList& fields) {
    QStringList quoted;
    std::transform(fields.begin(), fields.end(), std::back_inserter(quoted), Quoted);
    return quoted.join(u';');
}

QStringList Fields(const QString& line) {
    QStringList fields{QString()};
    bool isQuoted = false;
    for (qsizetype at = 0; at < line.size(); ++at) {
        const QChar sign = line.at(at);
        if (sign == u'"' && isQuoted && at + 1 < line.size() && line.at(at + 1) == u'"') {
            fields.back() += sign;
            ++at;
        } else if (sign == u'"' && (isQuoted || fields.constLast().isEmpty())) {
            isQuoted = !isQuoted;
        } else if (sign == u';' && !isQuoted) {
            fields.append(QString());
        } else {
            fields.back() += sign;
        }
    }
    return fields;
}

QByteArray Document(const QList<QStringList>& rows) {
    QByteArray bytes = "\xEF\xBB\xBF";
    for (const QStringList& row : rows)
        bytes += Line(row).toUtf8() + "\r\n";
    return bytes;
}

} // namespace kalvo::CsvText
