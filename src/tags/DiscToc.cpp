#include "tags/DiscToc.h"

#include <algorithm>

namespace kalvo {

namespace {

constexpr int kSectorsPerSecond = 75;
constexpr int kMostTracks = 99;

int DigitSum(int number) {
    int sum = 0;
    for (; number > 0; number /= 10)
        sum += number % 10;
    return sum;
}

} // namespace

bool DiscToc::IsValid() const {
    const auto notRising = [](int a, int b) { return a >= b; };
    return !offsets.isEmpty() && offsets.size() <= kMostTracks && offsets.first() >= 0 && leadOut > offsets.last() &&
           std::adjacent_find(offsets.begin(), offsets.end(), notRising) == offsets.end();
}

int DiscToc::Seconds() const {
    return leadOut / kSectorsPerSecond;
}

QString DiscToc::DiscId() const {
    if (!IsValid())
        return {};
    int sum = 0;
    for (const int offset : offsets)
        sum += DigitSum(offset / kSectorsPerSecond);
    const int playing = Seconds() - offsets.first() / kSectorsPerSecond;
    const auto id = (quint32(sum % 255) << 24U) | (quint32(playing & 0xFFFF) << 8U) | quint32(offsets.size());
    return QStringLiteral("%1").arg(id, 8, 16, QLatin1Char('0'));
}

bool IsDiscId(const QString& text) {
    return text.size() == 8 && std::all_of(text.begin(), text.end(), [](QChar c) {
               return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f');
           });
}

} // namespace kalvo
