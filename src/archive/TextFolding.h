#pragma once

#include <QStringView>

#include <string>
#include <string_view>

/**
 * The form in which texts are compared: UTF-8 of NFC with simple case folding, so that "MÄNNER" is "männer" in whatever
 * way the umlaut was written. A NUL becomes a blank. Any thread.
 */
namespace kalvo::TextFolding {

bool IsAscii(std::string_view text);

/** Appends the folded form of a UTF-8 text. */
void AppendFolded(std::string_view utf8, std::string& out);
std::string Folded(QStringView text);

/** Sort key of a folded text, compared bytewise: diacritics gone, "ß" as "ss". ASCII is its own key. */
std::string SortKey(std::string_view folded);

/** Below 0, 0 or above 0, by the sort keys of two folded texts. */
int Compare(std::string_view left, std::string_view right);

} // namespace kalvo::TextFolding
