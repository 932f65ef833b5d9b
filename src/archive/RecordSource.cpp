#include "archive/RecordSource.h"

namespace kalvo {

namespace {

/** Reads words, literals and signs off the front of the statement. */
class Scanner {
public:
    explicit Scanner(QStringView text) : rest_(text.trimmed()) {}

    bool AtEnd() const { return rest_.isEmpty(); }

    bool TakeSign(QChar sign) {
        if (!rest_.startsWith(sign))
            return false;
        Drop(1);
        return true;
    }

    bool TakeWord(QStringView word) {
        const QStringView found = PeekWord();
        if (found.compare(word, Qt::CaseInsensitive) != 0)
            return false;
        Drop(found.size());
        return true;
    }

    std::optional<ArchiveField> TakeField() {
        const QStringView word = PeekWord();
        const auto field = FieldOfName(word);
        if (field)
            Drop(word.size());
        return field;
    }

    std::optional<QString> TakeLiteral() {
        if (!rest_.startsWith(u'\''))
            return std::nullopt;
        const qsizetype end = rest_.indexOf(u'\'', 1);
        if (end < 0)
            return std::nullopt;
        const QString literal = rest_.mid(1, end - 1).toString();
        Drop(end + 1);
        return literal;
    }

private:
    QStringView PeekWord() const {
        qsizetype length = 0;
        while (length < rest_.size() && (rest_[length].isLetterOrNumber() || rest_[length] == u'_'))
            ++length;
        return rest_.first(length);
    }

    void Drop(qsizetype count) { rest_ = rest_.mid(count).trimmed(); }

    QStringView rest_;
};

std::optional<RecordCondition> TakeCondition(Scanner& scanner) {
    const auto field = scanner.TakeField();
    if (!field)
        return std::nullopt;
    const bool like = scanner.TakeWord(u"Like");
    if (!like && !scanner.TakeSign(u'='))
        return std::nullopt;
    const auto text = scanner.TakeLiteral();
    if (!text)
        return std::nullopt;
    return RecordCondition{*field, like, *text};
}

bool TakeConditions(Scanner& scanner, QList<RecordCondition>& conditions) {
    do {
        const auto condition = TakeCondition(scanner);
        if (!condition)
            return false;
        conditions.append(*condition);
    } while (scanner.TakeWord(u"or"));
    return true;
}

bool TakeOrder(Scanner& scanner, QList<RecordOrder>& order) {
    if (!scanner.TakeWord(u"By"))
        return false;
    do {
        const auto field = scanner.TakeField();
        if (!field)
            return false;
        const bool descending = scanner.TakeWord(u"DESC");
        if (!descending)
            scanner.TakeWord(u"ASC");
        order.append({*field, descending});
    } while (scanner.TakeSign(u','));
    return true;
}

} // namespace

std::optional<RecordSource> ParseRecordSource(QStringView statement) {
    Scanner scanner(statement);
    RecordSource source;
    if (!scanner.TakeWord(u"Select") || !scanner.TakeSign(u'*') || !scanner.TakeWord(u"From") ||
        !scanner.TakeWord(u"Daten"))
        return std::nullopt;
    if (scanner.TakeWord(u"Where") && !TakeConditions(scanner, source.conditions))
        return std::nullopt;
    if (scanner.TakeWord(u"Order") && !TakeOrder(scanner, source.order))
        return std::nullopt;
    if (!scanner.AtEnd())
        return std::nullopt;
    return source;
}

std::optional<RecordSource> ParseCriterion(QStringView criterion) {
    Scanner scanner(criterion);
    RecordSource source;
    if (!TakeConditions(scanner, source.conditions) || !scanner.AtEnd())
        return std::nullopt;
    return source;
}

} // namespace kalvo
