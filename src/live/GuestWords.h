#pragma once

#include <QByteArray>

#include <string_view>

namespace kalvo {

enum class GuestLanguage { German, English };

/** The words of the guests' page. Any thread. */
namespace GuestWords {

/** UTF-8, ready for HTML; empty for an unknown key. "%1", "%2" stand for what is to be put in. */
QByteArray Of(GuestLanguage language, std::string_view key);

/** "de" or "en". */
QByteArray Code(GuestLanguage language);

/**
 * chosen: "de" or "en", what the guest has switched to. Otherwise the first of the two that the browser names in
 * "Accept-Language"; English when it names others only, German when it names none.
 */
GuestLanguage Choose(const QByteArray& chosen, const QByteArray& accepted);

} // namespace GuestWords

} // namespace kalvo
