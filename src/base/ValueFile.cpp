#include "base/ValueFile.h"

#include "base/AnsiText.h"
#include "base/AtomicFile.h"
#include "base/PlainText.h"

#include <QFile>

namespace kalvo::ValueFile {

namespace {

const QByteArray byteOrderMark = QByteArrayLiteral("\xEF\xBB\xBF");

QByteArray Written(const Value& value) {
    if (const int* number = std::get_if<int>(&value))
        return QByteArray::number(*number);
    QString text = PlainText::WithoutControls(std::get<QString>(value));
    text.replace(u'"', QStringLiteral("\"\""));
    return '"' + AnsiText::Encode(text) + '"';
}

bool IsBlank(char byte) {
    return byte == ' ' || byte == '\t';
}

/** Reads one line of values from left to right. */
class LineReader {
public:
    explicit LineReader(const QByteArray& line) : line_(line) {}

    QStringList Values() {
        QStringList values;
        do {
            SkipBlanks();
            values.append(AnsiText::Decode(AtQuote() ? Quoted() : Bare()));
        } while (SkipComma());
        return values;
    }

private:
    bool AtEnd() const { return at_ >= line_.size(); }
    bool AtQuote() const { return !AtEnd() && line_[at_] == '"'; }

    void SkipBlanks() {
        while (!AtEnd() && IsBlank(line_[at_]))
            ++at_;
    }

    bool SkipComma() {
        if (AtEnd())
            return false;
        ++at_; // values end at a comma or at the line's end
        return true;
    }

    QByteArray Bare() {
        const qsizetype comma = line_.indexOf(',', at_);
        const qsizetype end = comma < 0 ? line_.size() : comma;
        QByteArray value = line_.mid(at_, end - at_).trimmed();
        at_ = end;
        return value;
    }

    QByteArray Quoted() {
        QByteArray value;
        for (++at_; !AtEnd(); ++at_) {
            if (line_[at_] == '"') {
                if (at_ + 1 < line_.size() && line_[at_ + 1] == '"')
                    ++at_; // a doubled quote is one of the text's own
                else if (SkipClosing())
                    break;
            }
            value.append(line_[at_]);
        }
        return value;
    }

    bool SkipClosing() {
        const qsizetype quote = at_++;
        SkipBlanks();
        if (AtEnd() || line_[at_] == ',')
            return true;
        at_ = quote;
        return false;
    }

    const QByteArray& line_;
    qsizetype at_ = 0;
};

} // namespace

QByteArray Bytes(const QList<Value>& values) {
    QByteArrayList written;
    for (const Value& value : values)
        written.append(Written(value));
    return written.join(',') + "\r\n";
}

QStringList Parse(const QByteArray& bytes) {
    QByteArray text = bytes.startsWith(byteOrderMark) ? bytes.mid(byteOrderMark.size()) : bytes;
    QStringList values;
    const QByteArrayList lines = text.replace('\r', '\n').split('\n');
    for (const QByteArray& line : lines) {
        if (!line.trimmed().isEmpty())
            values.append(LineReader(line).Values());
    }
    return values;
}

bool Write(const QString& path, const QList<Value>& values) {
    return WriteAtomically(path, Bytes(values));
}

QStringList Read(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = file.readAll();
    return PlainText::IsText(bytes) ? Parse(bytes) : QStringList();
}

} // namespace kalvo::ValueFile
