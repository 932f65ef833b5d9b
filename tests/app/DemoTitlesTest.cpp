#include "app/DemoTitles.h"

#include "app/DemoSynth.h"
#include "support/TestFolder.h"

#include <QtCore>
#include <gtest/gtest.h>
#include <sndfile.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

TEST(DemoSynth, TheLoudestPeakIsHalfAndTheEndsAreSilent) {
    const DemoTune tune{120, 60, {0, -109, 5, 7}, 2};
    const std::vector<float> stereo = RenderDemoTune(tune);
    ASSERT_EQ(stereo.size(), 2U * 4 * kDemoSampleRate);
    const auto [lowest, highest] = std::minmax_element(stereo.begin(), stereo.end());
    EXPECT_FLOAT_EQ(std::max(-*lowest, *highest), 0.5F);
    EXPECT_LT(std::abs(stereo.front()), 0.001F);
    EXPECT_LT(std::abs(stereo.back()), 0.001F);
}

TEST(DemoTitles, ADozenInBothFormatsCarryTheirTagsWithUmlauts) {
    const test::TestFolder folder;
    const QStringList titles = WriteDemoTitles(folder.Path(u"Musik/Vorführung"_s));
    ASSERT_EQ(titles.size(), 12);
    EXPECT_EQ(QSet<QString>(titles.begin(), titles.end()).size(), 12);
    EXPECT_EQ(titles.filter(u".mp3"_s).size(), 6);
    EXPECT_GE(titles.filter(QRegularExpression(u"[äöü]"_s)).size(), 4);
    for (const QString& title : titles) {
        SF_INFO info{};
        SNDFILE* file = sf_open(QFile::encodeName(title).constData(), SFM_READ, &info);
        SCOPED_TRACE(title.toStdString());
        ASSERT_NE(file, nullptr);
        EXPECT_NEAR(static_cast<double>(info.frames) / info.samplerate, 25, 5);
        const auto tag = [file](int which) { return QString::fromUtf8(sf_get_string(file, which)); };
        EXPECT_EQ(tag(SF_STR_ARTIST) + u" - "_s + tag(SF_STR_TITLE), QFileInfo(title).completeBaseName());
        EXPECT_EQ(tag(SF_STR_DATE).size(), 4);
        sf_close(file);
    }
    EXPECT_TRUE(WriteDemoTitles(folder.Write(u"datei"_s, "x") + u"/darin"_s).isEmpty()) << "cannot be written";
}

} // namespace
} // namespace kalvo
