#pragma once

#include "archive/ArchiveField.h"

#include <QList>

#include <algorithm>
#include <functional>
#include <vector>

namespace kalvo::test {

/** What the archive shall answer, found the plainest way over a list of titles: the oracle of the random tests. */
class PlainArchive {
public:
    using Key = std::pair<ArchiveField, bool>; ///< field, descending
    using Wanted = std::function<bool(const TitleRecord&)>;

    std::vector<TitleRecord> titles;

    /** Letters compared one by one, composed, without case. */
    static std::u32string Fold(const QString& text) {
        std::u32string folded;
        for (const char32_t point : text.normalized(QString::NormalizationForm_C).toUcs4())
            folded += QChar::toCaseFolded(point);
        return folded;
    }

    static bool Equal(const QString& left, const QString& right) { return Fold(left) == Fold(right); }

    /** "*" and "'" in the pattern stand for any characters. */
    static bool Like(const QString& text, QString pattern) {
        return Match(Fold(text), 0, Fold(pattern.replace(u'\'', u'*')), 0);
    }

    /** Like telephone books: accents do not count, "ß" is "ss". */
    static QByteArray SortKey(const QString& text) {
        QString key;
        const std::u32string folded = Fold(text);
        for (const QChar c : QString::fromUcs4(folded.data(), static_cast<qsizetype>(folded.size()))
                                 .normalized(QString::NormalizationForm_D))
            if (c.category() != QChar::Mark_NonSpacing)
                key += c == QChar(0xDF) ? QStringLiteral("ss") : QString(c);
        return key.toUtf8();
    }

    std::vector<qint64> Select(const Wanted& wanted, QList<Key> order) const {
        std::vector<TitleRecord> found;
        std::copy_if(titles.begin(), titles.end(), std::back_inserter(found), wanted);
        order << Key{ArchiveField::Interpret, false} << Key{ArchiveField::Titel, false};
        std::stable_sort(found.begin(), found.end(), [&](const TitleRecord& left, const TitleRecord& right) {
            for (const auto& [field, descending] : order) {
                const QByteArray a = SortKey(FieldText(left, field));
                const QByteArray b = SortKey(FieldText(right, field));
                if (a != b)
                    return descending ? b < a : a < b;
            }
            return left.Nr < right.Nr;
        });
        std::vector<qint64> numbers;
        for (const TitleRecord& title : found)
            numbers.push_back(title.Nr);
        return numbers;
    }

private:
    static bool Match(const std::u32string& text, std::size_t at, const std::u32string& pattern, std::size_t from) {
        for (; from < pattern.size() && pattern[from] != U'*'; ++from, ++at)
            if (at >= text.size() || text[at] != pattern[from])
                return false;
        if (from == pattern.size())
            return at == text.size();
        while (from + 1 < pattern.size() && pattern[from + 1] == U'*')
            ++from;
        for (; at <= text.size(); ++at)
            if (Match(text, at, pattern, from + 1))
                return true;
        return false;
    }
};

} // namespace kalvo::test
