#include "live/GuestCode.h"

#include <qrencode.h>

#include <memory>

namespace kalvo {

GuestCode GuestCode::Of(const QByteArray& text) {
    const std::unique_ptr<QRcode, decltype(&QRcode_free)> drawn(
        QRcode_encodeString8bit(text.constData(), 0, QR_ECLEVEL_M), QRcode_free);
    GuestCode code;
    if (!drawn)
        return code;
    code.width = drawn->width;
    const auto modules = static_cast<std::size_t>(drawn->width) * static_cast<std::size_t>(drawn->width);
    for (std::size_t i = 0; i < modules; ++i)
        code.dark.push_back((drawn->data[i] & 1) != 0);
    return code;
}

} // namespace kalvo
