#include "app/KeyNames.h"

#include <array>
#include <utility>

namespace kalvo {

namespace {

constexpr std::array<std::pair<const char*, const char16_t*>, 5> kKeyNames{
    {{"Return", u"Eingabe"}, {"Left", u"←"}, {"Right", u"→"}, {"Up", u"↑"}, {"Down", u"↓"}}};

} // namespace

QString KeyNames::translate(const char* context, const char* source, const char* /*disambiguation*/,
                            int /*number*/) const {
    if (qstrcmp(context, "QShortcut") != 0)
        return {};
    for (const auto& [key, name] : kKeyNames)
        if (qstrcmp(source, key) == 0)
            return QString::fromUtf16(name);
    return {};
}

} // namespace kalvo
