#include "live/PreshowFinding.h"

#include <QStringList>

#include <algorithm>

namespace kalvo::Preshow {

namespace {

using namespace Qt::StringLiterals;

qsizetype CountOf(const QList<PreshowFinding>& findings, PreshowSeverity severity) {
    return std::count_if(findings.begin(), findings.end(),
                         [severity](const PreshowFinding& finding) { return finding.severity == severity; });
}

} // namespace

QString Verdict(const QList<PreshowFinding>& findings) {
    QStringList parts;
    if (const qsizetype errors = CountOf(findings, PreshowSeverity::Error); errors > 0)
        parts.append(u"%1 Fehler"_s.arg(errors));
    if (const qsizetype hints = CountOf(findings, PreshowSeverity::Hint); hints > 0)
        parts.append(hints == 1 ? u"1 Hinweis"_s : u"%1 Hinweise"_s.arg(hints));
    return parts.isEmpty() ? u"Alles bereit"_s : parts.join(u", "_s);
}

QString GroupName(PreshowSeverity severity) {
    switch (severity) {
    case PreshowSeverity::Error:
        return u"Fehler"_s;
    case PreshowSeverity::Hint:
        return u"Hinweise"_s;
    case PreshowSeverity::Good:
        break;
    }
    return u"In Ordnung"_s;
}

QString Report(const QList<PreshowFinding>& findings, const QString& head) {
    QString report = head + u'\n' + Verdict(findings) + u'\n';
    for (const PreshowSeverity severity : {PreshowSeverity::Error, PreshowSeverity::Hint, PreshowSeverity::Good}) {
        if (CountOf(findings, severity) == 0)
            continue;
        report += u'\n' + GroupName(severity) + u'\n';
        for (const PreshowFinding& finding : findings) {
            if (finding.severity == severity)
                report += u"- "_s + finding.where + u": "_s + finding.text + u'\n';
        }
    }
    return report;
}

} // namespace kalvo::Preshow
