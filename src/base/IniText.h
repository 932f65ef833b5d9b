#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace kalvo {

/**
 * Content of an initialisation file, kept line by line, so that comments, blank lines, foreign keys, their order and
 * line ends come back unchanged. Sections and keys are compared without case and without blanks around them; of equal
 * ones the first counts. Keys and values are ANSI texts, each for itself; in a file that is UTF-8 throughout they are
 * written as such.
 */
class IniText {
public:
    IniText() = default;
    explicit IniText(const QByteArray& bytes);

    /** Without surrounding blanks and without one pair of equal quotes; no value when the key is absent. */
    std::optional<QString> Value(const QString& section, const QString& key) const;
    /**
     * Replaces the value in its line or adds a line at the section's end. Quotes are put around what would lose blanks
     * or quotes of its own; line breaks and control characters become blanks. Names are the program's own: not empty,
     * without line breaks, "]" and "=", and a key does not start like a section or a comment.
     */
    void SetValue(const QString& section, const QString& key, const QString& value);

    QByteArray Bytes() const;

private:
    enum class Kind { Section, Key, Other };
    struct Line {
        Kind kind = Kind::Other;
        QString name;    ///< of the section or key
        QString value;   ///< of the key
        QByteArray text; ///< as it stands, without line end
        QByteArray end;  ///< empty only on the last line
    };

    static Line Parse(const QByteArray& text, const QByteArray& end);
    QByteArray Encoded(const QString& text) const;
    QByteArray WrittenValue(const QString& value) const;
    void AddSection(const QString& section);
    /** The section's head; lines_.size() when there is none. */
    qsizetype FindSection(const QString& section) const;
    /** Behind the last line of the section that starts at `head`. */
    qsizetype SectionEnd(qsizetype head) const;
    qsizetype FindKey(qsizetype head, const QString& key) const;
    void InsertLine(qsizetype at, const QByteArray& text);

    QByteArray mark_; ///< UTF-8 mark at the file's start
    QList<Line> lines_;
    bool isUtf8_ = false;
};

} // namespace kalvo
