#include "app/DemoTitles.h"

#include "app/DemoSynth.h"
#include "support/TestFolder.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <gtest/gtest.h>
#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

TEST(DemoSynth, TheLoudestPeakIsHalfAndTheEndsAreSilent) {
    const DemoTune tune{120, 60, {0, -109, 5, 7}, 2};
    const std::vector<float> stereo = RenderDemoTune(tune);
    ASSERT_EQ(stereo.size(), 2U * 4 * kDemoSampleRate);
    const auto loudest =
        std::max_element(stereo.begin(), stereo.end(), [](float a, float b) { return std::abs(a) < std::abs(b); });
    EXPECT_FLOAT_EQ(std::abs(*loudest), 0.5F);
    EXPECT_LT(std::abs(stereo.front()), 0.001F);
    EXPECT_LT(std::abs(stereo.back()), 0.001F);
}

TEST(DemoSynth, MusicNeverPausesInside) {
    const DemoTune tune{90, 57, {-100, 8, 3, 10}, 4};
    const std::vector<float> stereo = RenderDemoTune(tune);
    const std::size_t window = kDemoSampleRate / 10 * 2;
    for (std::size_t at = window; at + 3 * window < stereo.size(); at += window) {
        double energy = 0;
        for (std::size_t i = at; i < at + window; ++i)
            energy += static_cast<double>(stereo[i]) * static_cast<double>(stereo[i]);
        EXPECT_GT(std::sqrt(energy / static_cast<double>(window)), 0.01) << at;
    }
}

class DemoTitlesTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        folder = std::make_unique<test::TestFolder>();
        titles = WriteDemoTitles(folder->Path(u"Musik/Vorführung"_s));
    }
    static void TearDownTestSuite() { folder.reset(); }

    static std::unique_ptr<test::TestFolder> folder;
    static QStringList titles;
};

std::unique_ptr<test::TestFolder> DemoTitlesTest::folder;
QStringList DemoTitlesTest::titles;

TEST_F(DemoTitlesTest, ADozenInBothFormatsLastTwentyToThirtySeconds) {
    ASSERT_EQ(titles.size(), 12);
    EXPECT_EQ(QSet<QString>(titles.begin(), titles.end()).size(), 12);
    EXPECT_EQ(titles.filter(u".mp3"_s).size(), 6);
    for (const QString& title : titles) {
        SF_INFO info{};
        SNDFILE* file = sf_open(QFile::encodeName(title).constData(), SFM_READ, &info);
        ASSERT_NE(file, nullptr) << title.toStdString();
        const double seconds = static_cast<double>(info.frames) / info.samplerate;
        EXPECT_TRUE(seconds >= 20 && seconds <= 30) << title.toStdString() << ' ' << seconds;
        sf_close(file);
    }
}

TEST_F(DemoTitlesTest, BothFormatsCarryTheirTagsWithUmlauts) {
    int umlauts = 0;
    for (const QString& title : titles) {
        SF_INFO info{};
        SNDFILE* file = sf_open(QFile::encodeName(title).constData(), SFM_READ, &info);
        ASSERT_NE(file, nullptr);
        const QString name = QString::fromUtf8(sf_get_string(file, SF_STR_ARTIST)) + u" - "_s +
                             QString::fromUtf8(sf_get_string(file, SF_STR_TITLE));
        EXPECT_EQ(name, QFileInfo(title).completeBaseName());
        EXPECT_EQ(QString::fromUtf8(sf_get_string(file, SF_STR_DATE)).size(), 4) << title.toStdString();
        umlauts += name.contains(QChar(0xfc)) || name.contains(QChar(0xf6)) || name.contains(QChar(0xe4)) ? 1 : 0;
        sf_close(file);
    }
    EXPECT_GE(umlauts, 4);
}

TEST_F(DemoTitlesTest, AFolderThatCannotBeWrittenGivesNoTitles) {
    const QString file = folder->Write(u"datei"_s, "x");
    EXPECT_TRUE(WriteDemoTitles(file + u"/darin"_s).isEmpty());
}

} // namespace
} // namespace kalvo
