#include "tags/DiscToc.h"

#include <gtest/gtest.h>

namespace kalvo {
namespace {

TEST(DiscTocTest, TheIdIsTheCommonOne) {
    struct Case {
        DiscToc toc;
        const char* id;
    };
    const Case cases[] = {
        // One track from 2 s to 202 s: checksum 2, playing time 200 = 0xc8.
        {{{150}, 15150}, "0200c801"},
        // Starts at 2, 98 and 1000 s: 2 + (9 + 8) + 1 = 20 = 0x14; 1500 - 2 = 1498 = 0x05da.
        {{{150, 7350, 75000}, 112500}, "1405da03"},
        // Parts of seconds do not count: 2, 99, 200 s: 2 + 18 + 2 = 22 = 0x16; 302 - 2 = 300 = 0x012c.
        {{{224, 7499, 15000}, 22724}, "16012c03"},
        // No lead-in: 0 and 10 s: 0 + 1; 20 s.
        {{{0, 750}, 1500}, "01001402"}};
    for (const Case& c : cases) {
        EXPECT_EQ(c.toc.DiscId().toStdString(), c.id);
        EXPECT_TRUE(IsDiscId(c.toc.DiscId()));
    }
}

TEST(DiscTocTest, ABrokenTableHasNoId) {
    DiscToc hundred;
    for (int i = 0; i < 100; ++i)
        hundred.offsets.append(150 + i * 750);
    hundred.leadOut = 100000;
    const DiscToc broken[] = {{{}, 1000},          {{150, 150}, 1000}, {{150, 100}, 1000},
                              {{150, 1000}, 1000}, {{-1}, 1000},       hundred};
    for (const DiscToc& toc : broken)
        EXPECT_EQ(toc.DiscId(), QString());
    for (const char* text : {"", "0200c80", "0200C801", "0200c8011", "../0200c", "0200c80g"})
        EXPECT_FALSE(IsDiscId(QString::fromLatin1(text))) << text;
}

} // namespace
} // namespace kalvo
