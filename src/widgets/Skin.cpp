#include "widgets/Skin.h"

#include <array>

namespace kalvo {

namespace {

constexpr std::size_t skinCount = 5;
constexpr std::array<const char*, skinCount> names{"Dark Blue", "Light Blue", "Light Green", "Grey", "Light Grey"};
constexpr std::size_t defaultSkin = 2;

struct Token {
    QColor Skin::*colour;
    std::array<QRgb, skinCount> ofSkins; ///< in the order of the names
};

constexpr std::array<Token, 29> tokens{{
    {&Skin::window, {0x0e1a2b, 0xd5e3f1, 0xd6e5d6, 0x28292c, 0xdcdddf}},
    {&Skin::panel, {0x15263d, 0xe8f0f8, 0xe8f2e8, 0x35373b, 0xebeced}},
    {&Skin::base, {0x0a1320, 0xffffff, 0xfdfffd, 0x1a1c1e, 0xffffff}},
    {&Skin::alt, {0x101d30, 0xf1f6fb, 0xf1f7f1, 0x212326, 0xf4f5f5}},
    {&Skin::text, {0xeaf0f7, 0x0f1f30, 0x12231a, 0xf2f3f4, 0x1b1d20}},
    {&Skin::dim, {0xa3b5ca, 0x41566c, 0x41564a, 0xbcc0c5, 0x50545a}},
    {&Skin::button, {0x22364f, 0xfafcfe, 0xf9fcf9, 0x42454a, 0xfafafa}},
    {&Skin::edge, {0x7590b0, 0x6f88a3, 0x6f8a78, 0x9a9fa6, 0x83878d}},
    {&Skin::line, {0x2c425d, 0xb3c5d8, 0xb4c9b8, 0x515459, 0xbfc2c6}},
    {&Skin::grid, {0x1c2d44, 0xdde7f1, 0xdde9de, 0x2d3033, 0xe2e4e6}},
    {&Skin::highlight, {0x2565ae, 0x1f5fa8, 0x2b5f4a, 0x3a6da3, 0x3b566f}},
    {&Skin::highlightText, {0xffffff, 0xffffff, 0xffffff, 0xffffff, 0xffffff}},
    {&Skin::mark, {0x122a48, 0xc0d2e7, 0xc2d2cb, 0x233343, 0xc8d0d7}},
    {&Skin::onAir, {0xdc1029, 0xc8001c, 0xc8001c, 0xe6152d, 0xc8001c}},
    {&Skin::onAirInk, {0xffffff, 0xffffff, 0xffffff, 0xffffff, 0xffffff}},
    {&Skin::cued, {0x4bd68a, 0x0a6e38, 0x0a6b36, 0x5fdc97, 0x0a6b36}},
    {&Skin::cuedInk, {0x0a1018, 0xffffff, 0xffffff, 0x0a1018, 0xffffff}},
    {&Skin::warning, {0xffb52e, 0x9e4300, 0x9e4300, 0xffbc42, 0x9e4300}},
    {&Skin::warningFill, {0xffb52e, 0xffb52e, 0xffb52e, 0xffb52e, 0xffb52e}},
    {&Skin::warningFillInk, {0x0a1018, 0x0a1018, 0x0a1018, 0x0a1018, 0x0a1018}},
    {&Skin::p1, {0x4cc9f0, 0x006583, 0x006380, 0x62cdf0, 0x006380}},
    {&Skin::p1Ink, {0x0a1018, 0xffffff, 0xffffff, 0x0a1018, 0xffffff}},
    {&Skin::p2, {0xb9a0ff, 0x6a37c0, 0x6a37c0, 0xc4b0ff, 0x6a37c0}},
    {&Skin::p2Ink, {0x0a1018, 0xffffff, 0xffffff, 0x0a1018, 0xffffff}},
    {&Skin::waveBack, {0x0a1320, 0xffffff, 0xfdfffd, 0x1a1c1e, 0xffffff}},
    {&Skin::wavePlayed, {0x4a617e, 0x9db2c6, 0x9fb5a6, 0x62676d, 0xa9adb3}},
    {&Skin::meterLow, {0x3fca7c, 0x17934c, 0x17934c, 0x46cb80, 0x17934c}},
    {&Skin::meterMid, {0xffd23f, 0xc98a00, 0xc98a00, 0xffd23f, 0xc98a00}},
    {&Skin::meterHigh, {0xff5a4f, 0xd3231a, 0xd3231a, 0xff6258, 0xd3231a}},
}};

Skin SkinAt(std::size_t index) {
    Skin skin;
    skin.name = QLatin1String(names.at(index));
    for (const Token& token : tokens)
        skin.*token.colour = QColor(token.ofSkins.at(index));
    return skin;
}

} // namespace

QStringList Skins::Names() {
    QStringList list;
    for (const char* name : names)
        list += QLatin1String(name);
    return list;
}

Skin Skins::Named(const QString& name) {
    const auto found = Names().indexOf(name);
    return SkinAt(found < 0 ? defaultSkin : static_cast<std::size_t>(found));
}

QColor Mixed(const QColor& under, const QColor& over, double share) {
    const auto part = [share](int from, int to) { return qRound(from * (1 - share) + to * share); };
    return QColor(part(under.red(), over.red()), part(under.green(), over.green()), part(under.blue(), over.blue()));
}

} // namespace kalvo
