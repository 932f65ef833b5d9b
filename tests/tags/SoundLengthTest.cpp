#include "audio/OpenDecoder.h"
#include "audio/ReadAheadFile.h"
#include "tags/TagTest.h"

#include <QFile>

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;

/** What playing the file will find. */
double Played(const QString& path) {
    audio::ReadAheadFile file(audio::MakeFileSource(QFile::encodeName(path).toStdString()));
    EXPECT_TRUE(file.WaitUntilOpen());
    const auto decoder = audio::OpenDecoder(file);
    return decoder ? static_cast<double>(decoder->Format().frames) / decoder->Format().sampleRate : 0;
}

using SoundLength = TagTest;

TEST_F(SoundLength, IsWhatThePlayerWillPlay) {
    const auto sound = [this](const QString& name, const QStringList& options) {
        Sound(name, {.seconds = 9.3, .options = options});
        return folder.Read(name);
    };
    const QByteArray constant = sound(u"c.mp3"_s, {});
    const QByteArray variable = sound(u"v.mp3"_s, {u"-V"_s, u"4"_s});
    const QByteArray bare = sound(u"b.mp3"_s, {u"-t"_s});
    const QByteArray ogg = sound(u"o.ogg"_s, {});
    const struct {
        const char* name;
        QByteArray content;
    } cases[] = {{"constant", constant},
                 {"variable", variable},
                 {"variable without a header", sound(u"h.mp3"_s, {u"-V"_s, u"4"_s, u"-t"_s})},
                 {"constant without a header", bare},
                 {"variable, cut", variable.left(variable.size() / 2)},
                 {"constant, cut", constant.left(constant.size() / 3)},
                 {"bare, cut, with a tag", bare.left(bare.size() / 2) + Id3v1("Titel", "Wer", 1)},
                 {"two files in one", variable + variable},
                 {"tag behind", variable + Id3v1("Titel", "Wer", 1)},
                 {"ogg", ogg},
                 {"opus", sound(u"o.opus"_s, {})},
                 {"ogg, cut", ogg.left(ogg.size() * 2 / 3)},
                 {"ogg with garbage behind", ogg + QByteArray(70'000, 'x')},
                 {"ogg with half a page behind", ogg + QByteArray("OggS\0\0garbage", 13)},
                 {"ogg chained", ogg + ogg}};
    for (const auto& one : cases) {
        SCOPED_TRACE(one.name);
        const QString path = folder.Write(one.content.startsWith("OggS") ? u"x.ogg"_s : u"x.mp3"_s, one.content);
        ASSERT_NE(tags.AUDIOAnalyzeFileW(path), AudioFormat::Unknown);
        const double played = Played(path);
        EXPECT_GT(played, 2);
        EXPECT_NEAR(tags.AUDIOGetDurationW(), played, 0.06);
    }
}

} // namespace
} // namespace kalvo::test
