#include "widgets/Mnemonics.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

TEST(MnemonicsTest, EveryTextGetsALetterOfItsOwn) {
    struct Case {
        QStringList texts;
        QStringList lettered;
    };
    const Case cases[] = {
        {{u"&Suchen"_s, u"&Drucken"_s}, {u"&Suchen"_s, u"&Drucken"_s}},
        {{u"&Suchen"_s, u"&Sichern"_s}, {u"&Suchen"_s, u"S&ichern"_s}},
        {{u"Suchen"_s, u"&Sichern"_s}, {u"S&uchen"_s, u"&Sichern"_s}},
        {{u"Player 1: &Stop"_s, u"Player 2: &Stop"_s}, {u"Player 1: &Stop"_s, u"&Player 2: Stop"_s}},
        {{u"Rock && Pop"_s}, {u"&Rock && Pop"_s}},
        {{u"a\tEntf"_s, u"a\tEntf"_s}, {u"&a\tEntf"_s, u"a\tEntf"_s}},
        {{QString(), u"..."_s}, {QString(), u"..."_s}},
        {{u"Ändern"_s, u"ändern"_s}, {u"&Ändern"_s, u"ä&ndern"_s}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(WithMnemonics(c.texts), c.lettered) << WithMnemonics(c.texts).join(u'|').toStdString();
}

} // namespace
} // namespace kalvo
