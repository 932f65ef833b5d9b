// Settings files: nothing is lost on reading, what is written is read back, and nothing else changes by it.
// Input: section, key, value, another key, each ended by a zero byte; then the file.

#include "FuzzInput.h"

#include "base/AnsiText.h"
#include "base/IniText.h"
#include "base/PlainText.h"

using kalvo::AnsiText::Decode;
using kalvo::fuzz::Require;

namespace {

/** A name as the program would use one. */
QString Name(const QByteArray& bytes) {
    QString name = kalvo::PlainText::WithoutControls(Decode(bytes));
    name.remove(u'=').remove(u']').remove(u'[').remove(u';');
    return name.trimmed();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    kalvo::fuzz::Input input(data, size);
    const QString section = Name(input.Piece());
    const QString key = Name(input.Piece());
    const QString value = kalvo::PlainText::WithoutControls(Decode(input.Piece()));
    const QString other = Name(input.Piece());
    const QByteArray file = input.Rest();
    kalvo::IniText text(file);
    Require(text.Bytes() == file, "an unchanged file is written as it was");
    if (section.isEmpty() || key.isEmpty())
        return 0;
    const std::optional<QString> otherBefore = text.Value(section, other);
    text.SetValue(section, key, value);
    const kalvo::IniText again(text.Bytes());
    Require(text.Value(section, key) == value, "a value that was set is found");
    Require(again.Value(section, key) == value, "and found in the file written");
    Require(again.Bytes() == text.Bytes(), "and written again as it was");
    if (other.compare(key, Qt::CaseInsensitive) != 0)
        Require(again.Value(section, other) == otherBefore, "another key keeps its value");
    text.SetValue(section, key, value);
    Require(again.Bytes() == text.Bytes(), "the same value again changes nothing");
    return 0;
}
