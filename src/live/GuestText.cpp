#include "live/GuestText.h"

#include <algorithm>

namespace kalvo::GuestText {

QByteArray Escaped(const QString& text) {
    return text.toHtmlEscaped().replace(u'\'', QStringLiteral("&#39;")).toUtf8();
}

QString Cleaned(const QString& text, int characters) {
    QString cleaned = text;
    const auto isUnseen = [](QChar c) {
        return c.category() == QChar::Other_Control || c.category() == QChar::Other_Format ||
               c.category() == QChar::Other_NotAssigned;
    };
    std::replace_if(cleaned.begin(), cleaned.end(), isUnseen, QChar(u' '));
    cleaned = cleaned.simplified();
    qsizetype end = std::min<qsizetype>(cleaned.size(), characters);
    if (end > 0 && end < cleaned.size() && cleaned.at(end - 1).isHighSurrogate())
        --end;
    return cleaned.left(end).trimmed();
}

} // namespace kalvo::GuestText
