#include "archive/TextFolding.h"

#include <QList>
#include <QList>
#include <QString>

#include <algorithm>

namespace kalvo::TextFolding {

namespace {

QString FoldedUnicode(const QString& text) {
    const QString composed = text.normalized(QString::NormalizationForm_C);
    QString folded;
    folded.reserve(composed.size());
    for (const char32_t point : composed.toUcs4())
        folded += QChar::fromUcs4(point == 0 ? U' ' : QChar::toCaseFolded(point));
    return folded;
}

char FoldedAscii(char c) {
    if (c >= 'A' && c <= 'Z')
        return static_cast<char>(c + ('a' - 'A'));
    return c == 0 ? ' ' : c;
}

} // namespace

bool IsAscii(std::string_view text) {
    return std::none_of(text.begin(), text.end(), [](char c) { return static_cast<signed char>(c) < 0; });
}

void AppendFolded(std::string_view utf8, std::string& out) {
    if (!IsAscii(utf8)) {
        const QByteArray folded =
            FoldedUnicode(QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()))).toUtf8();
        out.append(folded.constData(), static_cast<std::size_t>(folded.size()));
        return;
    }
    const std::size_t start = out.size();
    out.resize(start + utf8.size());
    std::transform(utf8.begin(), utf8.end(), out.begin() + static_cast<std::ptrdiff_t>(start), FoldedAscii);
}

std::string Folded(QStringView text) {
    const QByteArray utf8 = text.toUtf8();
    std::string folded;
    AppendFolded({utf8.constData(), static_cast<std::size_t>(utf8.size())}, folded);
    return folded;
}

std::string SortKey(std::string_view folded) {
    if (IsAscii(folded))
        return std::string(folded);
    const QString decomposed = QString::fromUtf8(folded.data(), static_cast<qsizetype>(folded.size()))
                                   .normalized(QString::NormalizationForm_D);
    QString key;
    key.reserve(decomposed.size());
    for (const QChar c : decomposed) {
        if (c == QChar(0xDF))
            key += QStringLiteral("ss");
        else if (c.category() != QChar::Mark_NonSpacing)
            key += c;
    }
    return key.toStdString();
}

int Compare(std::string_view left, std::string_view right) {
    if (IsAscii(left) && IsAscii(right))
        return left.compare(right);
    return SortKey(left).compare(SortKey(right));
}

} // namespace kalvo::TextFolding
