#include "archive/TextFolding.h"

#include <QList>
#include <QString>

#include <algorithm>
#include <cstring>

namespace kalvo::TextFolding {

namespace {

/**
 * Most texts need nothing but ASCII and the Latin-1 letters U+00C0 to U+00FF, the UTF-8 pairs C3 80 to C3 BF. They are
 * composed already, and both forms of them can be told byte by byte.
 */
constexpr char kLatinLead = '\xC3';

constexpr bool IsContinuation(char c) {
    return (c & '\xC0') == '\x80';
}

bool IsLatin(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (static_cast<signed char>(text[i]) >= 0)
            continue;
        if (text[i] != kLatinLead || i + 1 == text.size() || !IsContinuation(text[i + 1]))
            return false;
        ++i;
    }
    return true;
}

/** Second byte of the small letter; U+00D7, the sign between the capitals, has none. */
char FoldedSecond(char second) {
    const auto byte = static_cast<unsigned char>(second);
    return byte <= 0x9E && byte != 0x97 ? static_cast<char>(byte + 0x20) : second;
}

/** What the folded letters U+00E0 to U+00FF sort as; '?': as themselves. */
constexpr std::string_view kPlainLetters = "aaaaaa?ceeeeiiii?nooooo??uuuuy?y";
constexpr char kSharpS = '\x9F';

std::string LatinSortKey(std::string_view folded) {
    std::string key;
    key.reserve(folded.size());
    for (std::size_t i = 0; i < folded.size(); ++i) {
        if (folded[i] != kLatinLead) {
            key += folded[i];
            continue;
        }
        const char second = folded[++i];
        const auto letter = static_cast<std::size_t>(static_cast<unsigned char>(second)) - 0xA0;
        if (second == kSharpS)
            key += "ss";
        else if (letter < kPlainLetters.size() && kPlainLetters[letter] != '?')
            key += kPlainLetters[letter];
        else
            key.append({kLatinLead, second});
    }
    return key;
}

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
    constexpr std::uint64_t kHighBits = 0x8080808080808080U;
    std::uint64_t seen = 0;
    std::size_t i = 0;
    for (std::uint64_t piece = 0; i + sizeof piece <= text.size(); i += sizeof piece) {
        std::memcpy(&piece, text.data() + i, sizeof piece);
        seen |= piece;
    }
    for (; i < text.size(); ++i)
        seen |= static_cast<unsigned char>(text[i]);
    return (seen & kHighBits) == 0;
}

void AppendFolded(std::string_view utf8, std::string& out) {
    const bool ascii = IsAscii(utf8);
    if (!ascii && !IsLatin(utf8)) {
        const QByteArray folded =
            FoldedUnicode(QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()))).toUtf8();
        out.append(folded.constData(), static_cast<std::size_t>(folded.size()));
        return;
    }
    const std::size_t start = out.size();
    out.resize(start + utf8.size());
    char* at = out.data() + start;
    std::transform(utf8.begin(), utf8.end(), at, FoldedAscii);
    for (std::size_t i = 1; !ascii && i < utf8.size(); ++i)
        if (at[i - 1] == kLatinLead)
            at[i] = FoldedSecond(at[i]);
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
    if (IsLatin(folded))
        return LatinSortKey(folded);
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
    const std::size_t common = std::min(left.size(), right.size());
    std::size_t at = 0;
    while (at < common && left[at] == right[at])
        ++at;
    if (at == left.size() && at == right.size())
        return 0;
    // Equal beginnings have equal keys, and ASCII is its own key: where both go on with it, it decides.
    const int leftNext = at < left.size() ? static_cast<unsigned char>(left[at]) : -1;
    const int rightNext = at < right.size() ? static_cast<unsigned char>(right[at]) : -1;
    if (leftNext < 0x80 && rightNext < 0x80)
        return leftNext - rightNext;
    return SortKey(left).compare(SortKey(right));
}

} // namespace kalvo::TextFolding
