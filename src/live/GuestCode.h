#pragma once

#include <QByteArray>

#include <vector>

namespace kalvo {

/** A QR code: a square of dark and light modules, without the light edge that it needs around it. */
struct GuestCode {
    int width = 0;          ///< in modules; 0: the text is too long
    std::vector<bool> dark; ///< row by row

    bool IsDark(int column, int row) const {
        return dark[static_cast<std::size_t>(row) * static_cast<std::size_t>(width) + static_cast<std::size_t>(column)];
    }

    /** text: at most some hundred bytes. Readable with a seventh of it hidden. Any thread. */
    static GuestCode Of(const QByteArray& text);
};

} // namespace kalvo
