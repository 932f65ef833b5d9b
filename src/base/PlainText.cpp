#include "base/PlainText.h"

#include <algorithm>

namespace kalvo::PlainText {

namespace {

/** Tab, line ends, form feed, end of file. */
constexpr QLatin1String allowed("\t\n\r\f\x1A");

bool IsControl(QChar character) {
    return character < u' ' && !allowed.contains(character);
}

} // namespace

bool IsText(const QByteArray& bytes) {
    return std::none_of(bytes.begin(), bytes.end(), [](char byte) { return IsControl(QLatin1Char(byte)); });
}

QString WithoutControls(QString text) {
    std::replace_if(
        text.begin(), text.end(),
        [](QChar character) { return character == u'\r' || character == u'\n' || IsControl(character); }, QChar(u' '));
    return text;
}

} // namespace kalvo::PlainText
