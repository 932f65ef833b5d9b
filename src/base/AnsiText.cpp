#include "base/AnsiText.h"

#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <optional>

namespace kalvo::AnsiText {

namespace {

/** Windows-1252 from 0x80 to 0x9F; the five unused places stand for themselves. The rest is Latin-1. */
constexpr std::array<char16_t, 32> highControls = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                   0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                   0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                   0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

bool IsAscii(const QByteArray& bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

/** Nothing when the bytes are not UTF-8 throughout. A mark at their start is a character like any other. */
std::optional<QString> FromUtf8(const QByteArray& bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    QString decoded = decoder.decode(bytes);
    return decoder.hasError() ? std::nullopt : std::optional(decoded);
}

/** False when a character is not in Windows-1252. */
bool ToCodePage(const QString& text, QByteArray& bytes) {
    bytes.reserve(text.size());
    for (const QChar character : text) {
        const char16_t unit = character.unicode();
        if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF)) {
            bytes.append(static_cast<char>(unit));
            continue;
        }
        const auto* const found = std::find(highControls.begin(), highControls.end(), unit);
        if (found == highControls.end())
            return false;
        bytes.append(static_cast<char>(0x80 + (found - highControls.begin())));
    }
    return true;
}

} // namespace

bool IsUtf8(const QByteArray& bytes) {
    return !IsAscii(bytes) && FromUtf8(bytes);
}

QByteArray Encode(const QString& text) {
    QByteArray bytes;
    if (!ToCodePage(text, bytes) || IsUtf8(bytes))
        return text.toUtf8();
    return bytes;
}

QString Decode(const QByteArray& bytes) {
    if (const std::optional<QString> decoded = FromUtf8(bytes))
        return *decoded;
    QString text(bytes.size(), Qt::Uninitialized);
    std::transform(bytes.begin(), bytes.end(), text.begin(), [](char byte) {
        const auto code = static_cast<unsigned char>(byte);
        return QChar(code >= 0x80 && code < 0xA0 ? highControls[code - 0x80U] : char16_t{code});
    });
    return text;
}

QByteArray EncodeCut(const QString& text, int width) {
    QString kept = text.left(width);
    for (;;) {
        if (!kept.isEmpty() && kept.back().isHighSurrogate())
            kept.chop(1);
        QByteArray bytes = Encode(kept);
        if (bytes.size() <= width)
            return bytes;
        kept.chop(1);
    }
}

} // namespace kalvo::AnsiText
