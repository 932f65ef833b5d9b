#include "base/IniText.h"

#include "base/AnsiText.h"
#include "base/PlainText.h"

namespace kalvo {

namespace {

const QByteArray utf8Mark = QByteArrayLiteral("\xEF\xBB\xBF");
const QByteArray newLineEnd = QByteArrayLiteral("\r\n");

bool IsSame(const QString& left, const QString& right) {
    return left.compare(right.trimmed(), Qt::CaseInsensitive) == 0;
}

bool HasQuotes(const QString& value) {
    return value.size() >= 2 && value.front() == value.back() && (value.front() == u'"' || value.front() == u'\'');
}

QString Unquoted(const QString& value) {
    return HasQuotes(value) ? value.mid(1, value.size() - 2) : value;
}

QByteArray LineEnd(const QByteArray& bytes, qsizetype at) {
    if (bytes.at(at) == '\r' && at + 1 < bytes.size() && bytes.at(at + 1) == '\n')
        return newLineEnd;
    return bytes.mid(at, 1);
}

} // namespace

IniText::IniText(const QByteArray& bytes) : isUtf8_(AnsiText::IsUtf8(bytes)) {
    if (bytes.startsWith(utf8Mark))
        mark_ = utf8Mark;
    qsizetype start = mark_.size();
    for (qsizetype at = start; at < bytes.size(); ++at) {
        if (bytes.at(at) != '\n' && bytes.at(at) != '\r')
            continue;
        const QByteArray end = LineEnd(bytes, at);
        lines_.append(Parse(bytes.mid(start, at - start), end));
        at += end.size() - 1;
        start = at + 1;
    }
    if (start < bytes.size())
        lines_.append(Parse(bytes.mid(start), {}));
}

IniText::Line IniText::Parse(const QByteArray& text, const QByteArray& end) {
    Line line{Kind::Other, {}, {}, text, end};
    const QByteArray content = text.trimmed();
    const qsizetype closing = content.indexOf(']');
    const qsizetype equals = content.indexOf('=');
    if (content.startsWith('[') && closing > 0) {
        line.kind = Kind::Section;
        line.name = AnsiText::Decode(content.mid(1, closing - 1)).trimmed();
    } else if (equals >= 0 && !content.startsWith(';')) {
        line.kind = Kind::Key;
        line.name = AnsiText::Decode(content.left(equals)).trimmed();
        line.value = Unquoted(AnsiText::Decode(content.mid(equals + 1)).trimmed());
    }
    return line;
}

QByteArray IniText::Encoded(const QString& text) const {
    return isUtf8_ ? text.toUtf8() : AnsiText::Encode(text);
}

QByteArray IniText::WrittenValue(const QString& value) const {
    const QString line = PlainText::WithoutControls(value);
    const bool loses = HasQuotes(line) || line.trimmed() != line;
    return Encoded(loses ? u'"' + line + u'"' : line);
}

std::optional<QString> IniText::Value(const QString& section, const QString& key) const {
    const qsizetype at = FindKey(FindSection(section), key);
    return at < lines_.size() ? std::optional(lines_.at(at).value) : std::nullopt;
}

void IniText::SetValue(const QString& section, const QString& key, const QString& value) {
    const QByteArray written = WrittenValue(value);
    const qsizetype old = FindKey(FindSection(section), key);
    if (old < lines_.size()) {
        Line& line = lines_[old];
        line = Parse(line.text.left(line.text.indexOf('=') + 1) + written, line.end);
        return;
    }
    if (FindSection(section) == lines_.size())
        AddSection(section);
    qsizetype at = SectionEnd(FindSection(section));
    while (lines_.at(at - 1).text.trimmed().isEmpty())
        --at; // blank lines go on parting the sections
    InsertLine(at, Encoded(key.trimmed()) + '=' + written);
}

QByteArray IniText::Bytes() const {
    QByteArray bytes = mark_;
    for (const Line& line : lines_)
        bytes += line.text + line.end;
    return bytes;
}

void IniText::AddSection(const QString& section) {
    InsertLine(lines_.size(), '[' + Encoded(section.trimmed()) + ']');
}

qsizetype IniText::FindSection(const QString& section) const {
    qsizetype at = 0;
    while (at < lines_.size() && !(lines_.at(at).kind == Kind::Section && IsSame(lines_.at(at).name, section)))
        ++at;
    return at;
}

qsizetype IniText::SectionEnd(qsizetype head) const {
    qsizetype at = head + 1;
    while (at < lines_.size() && lines_.at(at).kind != Kind::Section)
        ++at;
    return at;
}

qsizetype IniText::FindKey(qsizetype head, const QString& key) const {
    if (head == lines_.size())
        return head;
    const qsizetype end = SectionEnd(head);
    for (qsizetype at = head + 1; at < end; ++at) {
        if (lines_.at(at).kind == Kind::Key && IsSame(lines_.at(at).name, key))
            return at;
    }
    return lines_.size();
}

void IniText::InsertLine(qsizetype at, const QByteArray& text) {
    const QByteArray end = at > 0 && !lines_.at(at - 1).end.isEmpty() ? lines_.at(at - 1).end
                           : lines_.size() > 1                        ? lines_.front().end
                                                                      : newLineEnd;
    if (at > 0 && lines_.at(at - 1).end.isEmpty())
        lines_[at - 1].end = end;
    lines_.insert(at, Parse(text, end));
}

} // namespace kalvo
