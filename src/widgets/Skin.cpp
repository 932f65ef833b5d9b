#include "widgets/Skin.h"

#include <array>

namespace kalvo {

namespace {

std::array<Skin, 5> AllSkins() {
    return {{
        {.name = QStringLiteral("Dark Blue"),
         .window = QColor(0x0e1a2b),
         .panel = QColor(0x15263d),
         .base = QColor(0x0a1320),
         .alt = QColor(0x101d30),
         .text = QColor(0xeaf0f7),
         .dim = QColor(0xa3b5ca),
         .button = QColor(0x22364f),
         .edge = QColor(0x7590b0),
         .line = QColor(0x2c425d),
         .grid = QColor(0x1c2d44),
         .highlight = QColor(0x2565ae),
         .highlightText = QColor(0xffffff),
         .mark = QColor(0x122a48),
         .onAir = QColor(0xdc1029),
         .onAirInk = QColor(0xffffff),
         .cued = QColor(0x4bd68a),
         .cuedInk = QColor(0x0a1018),
         .warning = QColor(0xffb52e),
         .warningFill = QColor(0xffb52e),
         .warningFillInk = QColor(0x0a1018),
         .p1 = QColor(0x4cc9f0),
         .p1Ink = QColor(0x0a1018),
         .p2 = QColor(0xb9a0ff),
         .p2Ink = QColor(0x0a1018),
         .waveBack = QColor(0x0a1320),
         .wavePlayed = QColor(0x4a617e),
         .meterLow = QColor(0x3fca7c),
         .meterMid = QColor(0xffd23f),
         .meterHigh = QColor(0xff5a4f)},
        {.name = QStringLiteral("Light Blue"),
         .window = QColor(0xd5e3f1),
         .panel = QColor(0xe8f0f8),
         .base = QColor(0xffffff),
         .alt = QColor(0xf1f6fb),
         .text = QColor(0x0f1f30),
         .dim = QColor(0x41566c),
         .button = QColor(0xfafcfe),
         .edge = QColor(0x6f88a3),
         .line = QColor(0xb3c5d8),
         .grid = QColor(0xdde7f1),
         .highlight = QColor(0x1f5fa8),
         .highlightText = QColor(0xffffff),
         .mark = QColor(0xc0d2e7),
         .onAir = QColor(0xc8001c),
         .onAirInk = QColor(0xffffff),
         .cued = QColor(0x0a6e38),
         .cuedInk = QColor(0xffffff),
         .warning = QColor(0x9e4300),
         .warningFill = QColor(0xffb52e),
         .warningFillInk = QColor(0x0a1018),
         .p1 = QColor(0x006583),
         .p1Ink = QColor(0xffffff),
         .p2 = QColor(0x6a37c0),
         .p2Ink = QColor(0xffffff),
         .waveBack = QColor(0xffffff),
         .wavePlayed = QColor(0x9db2c6),
         .meterLow = QColor(0x17934c),
         .meterMid = QColor(0xc98a00),
         .meterHigh = QColor(0xd3231a)},
        {.name = QStringLiteral("Light Green"),
         .window = QColor(0xd6e5d6),
         .panel = QColor(0xe8f2e8),
         .base = QColor(0xfdfffd),
         .alt = QColor(0xf1f7f1),
         .text = QColor(0x12231a),
         .dim = QColor(0x41564a),
         .button = QColor(0xf9fcf9),
         .edge = QColor(0x6f8a78),
         .line = QColor(0xb4c9b8),
         .grid = QColor(0xdde9de),
         .highlight = QColor(0x2b5f4a),
         .highlightText = QColor(0xffffff),
         .mark = QColor(0xc2d2cb),
         .onAir = QColor(0xc8001c),
         .onAirInk = QColor(0xffffff),
         .cued = QColor(0x0a6b36),
         .cuedInk = QColor(0xffffff),
         .warning = QColor(0x9e4300),
         .warningFill = QColor(0xffb52e),
         .warningFillInk = QColor(0x0a1018),
         .p1 = QColor(0x006380),
         .p1Ink = QColor(0xffffff),
         .p2 = QColor(0x6a37c0),
         .p2Ink = QColor(0xffffff),
         .waveBack = QColor(0xfdfffd),
         .wavePlayed = QColor(0x9fb5a6),
         .meterLow = QColor(0x17934c),
         .meterMid = QColor(0xc98a00),
         .meterHigh = QColor(0xd3231a)},
        {.name = QStringLiteral("Grey"),
         .window = QColor(0x28292c),
         .panel = QColor(0x35373b),
         .base = QColor(0x1a1c1e),
         .alt = QColor(0x212326),
         .text = QColor(0xf2f3f4),
         .dim = QColor(0xbcc0c5),
         .button = QColor(0x42454a),
         .edge = QColor(0x9a9fa6),
         .line = QColor(0x515459),
         .grid = QColor(0x2d3033),
         .highlight = QColor(0x3a6da3),
         .highlightText = QColor(0xffffff),
         .mark = QColor(0x233343),
         .onAir = QColor(0xe6152d),
         .onAirInk = QColor(0xffffff),
         .cued = QColor(0x5fdc97),
         .cuedInk = QColor(0x0a1018),
         .warning = QColor(0xffbc42),
         .warningFill = QColor(0xffb52e),
         .warningFillInk = QColor(0x0a1018),
         .p1 = QColor(0x62cdf0),
         .p1Ink = QColor(0x0a1018),
         .p2 = QColor(0xc4b0ff),
         .p2Ink = QColor(0x0a1018),
         .waveBack = QColor(0x1a1c1e),
         .wavePlayed = QColor(0x62676d),
         .meterLow = QColor(0x46cb80),
         .meterMid = QColor(0xffd23f),
         .meterHigh = QColor(0xff6258)},
        {.name = QStringLiteral("Light Grey"),
         .window = QColor(0xdcdddf),
         .panel = QColor(0xebeced),
         .base = QColor(0xffffff),
         .alt = QColor(0xf4f5f5),
         .text = QColor(0x1b1d20),
         .dim = QColor(0x50545a),
         .button = QColor(0xfafafa),
         .edge = QColor(0x83878d),
         .line = QColor(0xbfc2c6),
         .grid = QColor(0xe2e4e6),
         .highlight = QColor(0x3b566f),
         .highlightText = QColor(0xffffff),
         .mark = QColor(0xc8d0d7),
         .onAir = QColor(0xc8001c),
         .onAirInk = QColor(0xffffff),
         .cued = QColor(0x0a6b36),
         .cuedInk = QColor(0xffffff),
         .warning = QColor(0x9e4300),
         .warningFill = QColor(0xffb52e),
         .warningFillInk = QColor(0x0a1018),
         .p1 = QColor(0x006380),
         .p1Ink = QColor(0xffffff),
         .p2 = QColor(0x6a37c0),
         .p2Ink = QColor(0xffffff),
         .waveBack = QColor(0xffffff),
         .wavePlayed = QColor(0xa9adb3),
         .meterLow = QColor(0x17934c),
         .meterMid = QColor(0xc98a00),
         .meterHigh = QColor(0xd3231a)},
    }};
}

} // namespace

QStringList Skins::Names() {
    QStringList names;
    for (const Skin& skin : AllSkins())
        names += skin.name;
    return names;
}

Skin Skins::Named(const QString& name) {
    const std::array<Skin, 5> skins = AllSkins();
    for (const Skin& skin : skins) {
        if (skin.name == name)
            return skin;
    }
    return Named(QStringLiteral("Light Green"));
}

QColor Mixed(const QColor& under, const QColor& over, double share) {
    const auto part = [share](int from, int to) { return qRound(from * (1 - share) + to * share); };
    return QColor(part(under.red(), over.red()), part(under.green(), over.green()), part(under.blue(), over.blue()));
}

} // namespace kalvo
