#include "audio/OpenDecoder.h"
#include "audio/ReadAheadFile.h"
#include "support/SoundMaker.h"
#include "support/TestFolder.h"
#include "tags/TagBytes.h"
#include "tags/clsAudioGenie.h"

#include <QFile>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using test::SoundSpec;

/** What playing the file will find. */
double Played(const QString& path) {
    audio::ReadAheadFile file(audio::MakeFileSource(QFile::encodeName(path).toStdString()));
    EXPECT_TRUE(file.WaitUntilOpen());
    const auto decoder = audio::OpenDecoder(file);
    return decoder ? static_cast<double>(decoder->Format().frames) / decoder->Format().sampleRate : 0;
}

TEST(SoundLength, IsWhatThePlayerWillPlay) {
    const test::TestFolder folder;
    const auto sound = [&folder](const QString& name, const QStringList& options) {
        SoundSpec spec;
        spec.seconds = 9.3;
        spec.options = options;
        test::MakeSound(folder.Path(), name, spec);
        return folder.Read(name);
    };
    const QString t = QStringLiteral("-t");
    const QByteArray constant = sound(QStringLiteral("c.mp3"), {});
    const QByteArray variable = sound(QStringLiteral("v.mp3"), {QStringLiteral("-V"), QStringLiteral("4")});
    const QByteArray headless = sound(QStringLiteral("h.mp3"), {QStringLiteral("-V"), QStringLiteral("4"), t});
    const QByteArray bare = sound(QStringLiteral("b.mp3"), {t});
    const QByteArray ogg = sound(QStringLiteral("o.ogg"), {});
    const QByteArray opus = sound(QStringLiteral("o.opus"), {});
    const QByteArray id3v1 = test::Id3v1("Titel", "Wer", 1);
    const struct {
        const char* name;
        QByteArray content;
    } cases[] = {{"constant", constant},
                 {"variable", variable},
                 {"variable without a header", headless},
                 {"constant without a header", bare},
                 {"variable, cut", variable.left(variable.size() / 2)},
                 {"constant, cut", constant.left(constant.size() / 3)},
                 {"bare, cut, with a tag", bare.left(bare.size() / 2) + id3v1},
                 {"two files in one", variable + variable},
                 {"tag behind", variable + id3v1},
                 {"ogg", ogg},
                 {"opus", opus},
                 {"ogg, cut", ogg.left(ogg.size() * 2 / 3)},
                 {"ogg with garbage behind", ogg + QByteArray(70'000, 'x')},
                 {"ogg with half a page behind", ogg + QByteArray("OggS\0\0garbage", 13)},
                 {"ogg chained", ogg + ogg}};
    clsAudioGenie tags;
    for (const auto& one : cases) {
        const QString name = QString::fromLatin1(one.content.startsWith("OggS") ? "x.ogg" : "x.mp3");
        const QString path = folder.Write(name, one.content);
        ASSERT_NE(tags.AUDIOAnalyzeFileW(path), AudioFormat::Unknown) << one.name;
        const double played = Played(path);
        EXPECT_GT(played, 2) << one.name;
        EXPECT_NEAR(tags.AUDIOGetDurationW(), played, 0.06) << one.name;
    }
}

} // namespace
} // namespace kalvo
