// Tags written by other programs and by us, read by us and by other programs.

#include "support/SoundMaker.h"
#include "support/TestFolder.h"
#include "tags/TagBytes.h"
#include "tags/TagForm.h"
#include "tags/TitleFields.h"
#include "tags/clsAudioGenie.h"

#include <QFile>
#include <array>
#include <cstdio>
#include <gtest/gtest.h>

namespace kalvo {
namespace {

using test::Id3v2;
using test::MakeSound;
using test::SoundSpec;

/** What a program prints. */
QString Output(const QString& command) {
    QByteArray output;
    FILE* pipe = ::popen(command.toUtf8().constData(), "r");
    std::array<char, 4096> piece{};
    while (pipe != nullptr && std::fgets(piece.data(), piece.size(), pipe) != nullptr)
        output += piece.data();
    EXPECT_EQ(pipe != nullptr ? ::pclose(pipe) : -1, 0) << command.toStdString();
    return QString::fromUtf8(output);
}

QByteArray Utf16(const QString& text, bool bigEndian) {
    QByteArray bytes(bigEndian ? "\xFE\xFF" : "\xFF\xFE");
    for (const QChar character : text) {
        const char high = static_cast<char>(character.unicode() >> 8);
        const char low = static_cast<char>(character.unicode() & 0xFF);
        bytes.append(bigEndian ? high : low).append(bigEndian ? low : high);
    }
    return bytes;
}

struct TagMatrixTest : ::testing::Test {
    QByteArray Sound() {
        MakeSound(folder.Path(), QStringLiteral("plain.mp3"), {.options = {QStringLiteral("--noreplaygain")}});
        return folder.Read(QStringLiteral("plain.mp3"));
    }
    test::TestFolder folder;
    clsAudioGenie tags;
};

TEST_F(TagMatrixTest, EveryVersionAndEncodingReadsTheSame) {
    const QString title = QStringLiteral("Größer als – ja");
    const QByteArray utf8 = title.toUtf8();
    const struct {
        const char* name;
        int version;
        QByteArray content;
    } cases[] = {{"2.2 1252", 2,
                  QByteArray("\0Gr\xF6\xDF"
                             "er als \x96 ja",
                             16)},
                 {"2.2 UTF-16", 2, '\1' + Utf16(title, false)},
                 {"2.3 1252", 3,
                  QByteArray("\0Gr\xF6\xDF"
                             "er als \x96 ja",
                             16)},
                 {"2.3 UTF-16 big", 3, '\1' + Utf16(title, true)},
                 {"2.3 UTF-8 told as Latin-1", 3, '\0' + utf8},
                 {"2.4 ends with zeros", 4, '\3' + utf8 + QByteArray(2, '\0')}};
    const QByteArray sound = Sound();
    for (const auto& one : cases) {
        SCOPED_TRACE(one.name);
        const bool old = one.version == 2;
        const QByteArray tag = Id3v2(one.version, {{old ? "TT2" : "TIT2", one.content},
                                                   {old ? "TCO" : "TCON", test::Latin1("(17)")},
                                                   {old                ? "TYE"
                                                    : one.version == 3 ? "TYER"
                                                                       : "TDRC",
                                                    test::Latin1("2019")}});
        ASSERT_EQ(tags.AUDIOAnalyzeFileW(folder.Write(QStringLiteral("a.mp3"), tag + sound)), AudioFormat::Mpeg);
        EXPECT_EQ(tags.ID3V2GetTextFrameW(FrameId("TIT2")), title);
        EXPECT_EQ(tags.ID3V2GetGenreW(), QStringLiteral("Rock"));
        EXPECT_EQ(tags.ID3V2GetTextFrameW(FrameId("TYER")), QStringLiteral("2019"));
        EXPECT_EQ(tags.ID3V2GetVersionW(), QStringLiteral("2.%1").arg(one.version));
    }
}

/** Another library's hand: "write PATH VERSION ENCODING" puts in every field, "show PATH" prints what it finds. */
const char* const kOtherLibrary = R"py(
import base64, sys
from mutagen import File
from mutagen.flac import Picture
from mutagen.id3 import APIC, COMM, Frames, ID3, USLT
what, path = sys.argv[1:3]
file = File(path)
ogg = not path.endswith('.mp3')
texts = dict(TIT2='Größer – ja', TPE1='Wer', TALB='Album', TCON='Rock', TDRC='2019', TRCK='3/12', TBPM='128')
names = dict(TIT2='title', TPE1='artist', TALB='album', TCON='genre', TDRC='date', TRCK='tracknumber', TBPM='bpm')
if what == 'write' and ogg:
    for frame, name in names.items(): file[name] = texts[frame]
    file['rating'], file['comment'], file['lyrics'] = 'sehr gut', 'tanzbar', 'Strophe'
    picture = Picture()
    picture.data, picture.mime, picture.type, picture.desc = b'\xff\xd8\xffbild', 'image/jpeg', 4, 'Hülle'
    file['metadata_block_picture'] = base64.b64encode(picture.write()).decode()
    file.save()
elif what == 'write':
    version, e = int(sys.argv[3]), int(sys.argv[4])
    latin = lambda text: text if e else text.replace('–', '-')
    tag = ID3()
    for frame, text in texts.items(): tag.add(Frames[frame](encoding=e, text=latin(text)))
    tag.add(COMM(encoding=e, lang='eng', desc='MusicMatch_Preference', text='sehr gut'))
    tag.add(COMM(encoding=e, lang='deu', desc='', text='tanzbar'))
    tag.add(USLT(encoding=e, lang='eng', desc='', text='Strophe'))
    tag.add(APIC(encoding=e, mime='image/jpeg', type=4, desc='Hülle', data=b'\xff\xd8\xffbild'))
    tag.update_to_v23() if version == 3 else tag.update_to_v24()
    tag.save(path, v1=0, v2_version=version)
elif ogg:
    picture = Picture(base64.b64decode(file['metadata_block_picture'][0]))
    print(*[file[name][0] for name in names.values()], file['rating'][0], file['comment'][0], file['lyrics'][0],
          picture.mime, picture.desc, picture.type, len(picture.data), sep='|')
else:
    tag = ID3(path)
    picture = tag.getall('APIC')[0]
    print(*[tag[name] for name in names], tag['COMM:MusicMatch_Preference:ENG'], tag['COMM::ENG'],
          tag['USLT:Kalvo_Lyrics:ENG'], picture.mime, picture.desc, int(picture.type), len(picture.data), sep='|')
)py";

TEST_F(TagMatrixTest, AnotherLibraryAndOursReadEachOthersFields) {
    const QString script = folder.Write(QStringLiteral("other.py"), kOtherLibrary);
    const auto other = [&script](const QString& what, const QString& path, const char* kind = "") {
        return Output(
            QStringLiteral("/usr/bin/python3 %1 %2 '%3' %4").arg(script, what, path, QString::fromLatin1(kind)));
    };
    const struct {
        const char* file;
        const char* kind; ///< ID3v2 version and encoding
    } cases[] = {{"a.mp3", "3 0"}, {"b.mp3", "3 1"}, {"c.mp3", "4 0"}, {"d.mp3", "4 1"},
                 {"e.mp3", "4 2"}, {"f.mp3", "4 3"}, {"g.ogg", ""},    {"h.opus", ""}};
    for (const auto& one : cases) {
        SCOPED_TRACE(std::string(one.file) + " " + one.kind);
        const QString made = MakeSound(folder.Path(), QString::fromLatin1(one.file));
        const QString path = QString(made).replace(QStringLiteral(".opus"), QStringLiteral(".ogg"));
        ASSERT_TRUE(path == made || QFile::rename(made, path));
        other(QStringLiteral("write"), path, one.kind);
        const TitleRecord record = ReadTitleFields(tags, path).value_or(TitleRecord{});
        const QString dash = QString::fromLatin1(one.kind).endsWith(u'0') ? QStringLiteral("-") : QStringLiteral("–");
        EXPECT_EQ(record.Titel, QStringLiteral("Größer %1 ja").arg(dash));
        EXPECT_EQ(QStringList({record.Interpret, record.Album, record.Stil, record.Jahr, record.Extra3, record.Extra4,
                               record.Bewertung, record.Extra1, tags.ID3V2GetLyricW(1)})
                      .join(u'|'),
                  QStringLiteral("Wer|Album|Rock|2019|3/12|128|sehr gut|tanzbar|Strophe"));
        EXPECT_EQ(tags.ID3V2GetPictureArrayW(1), QByteArray("\xFF\xD8\xFF"
                                                            "bild"));
        EXPECT_EQ(tags.ID3V2GetPictureDescriptionW(1) + tags.ID3V2GetPictureMimeW(1),
                  QStringLiteral("Hülleimage/jpeg"));
        EXPECT_EQ(tags.ID3V2GetPictureTypeW(1), 4);

        TagEdit edit;
        const std::pair<TagField, const char*> texts[] = {{TagField::Title, "Ändern – 日本"},
                                                          {TagField::Artist, "Neu"},
                                                          {TagField::Album, "Zwei"},
                                                          {TagField::Genre, "Jazz"},
                                                          {TagField::Year, "1999"},
                                                          {TagField::Track, "7"},
                                                          {TagField::Bpm, "99"},
                                                          {TagField::Rating, "gut"},
                                                          {TagField::Comment, "leise"},
                                                          {TagField::Lyric, "Refrain"}};
        for (const auto& [field, text] : texts)
            edit.Text(field) = QString::fromUtf8(text);
        edit.pictures = QList<TagPicture>{
            {QByteArray("\x89PNG\r\n", 6), QStringLiteral("image/png"), QStringLiteral("Rückseite"), 4}};
        ASSERT_EQ(WriteTagEdit(tags, path, edit).reason, QString());
        EXPECT_EQ(other(QStringLiteral("show"), path).trimmed(),
                  QStringLiteral("Ändern – 日本|Neu|Zwei|Jazz|1999|7|99|gut|leise|Refrain|image/png|Rückseite|4|6"));
    }
}

TEST_F(TagMatrixTest, OtherProgramsReadAndChangeTheSameTags) {
    const QString mp3 = folder.Write(QStringLiteral("w.mp3"), Sound());
    tags.AUDIOAnalyzeFileW(mp3);
    tags.ID3V1SetTitleW(QStringLiteral("Kurz"));
    tags.ID3V2SetTextFrameW(FrameId("TIT2"), QStringLiteral("Langer Titel"));
    tags.ID3V2SetTextFrameW(FrameId("TYER"), QStringLiteral("2021"));
    ASSERT_TRUE(tags.SaveChangesToFile()) << tags.AUDIOGetLastErrorTextW().toStdString();
    const QString listed = Output(QStringLiteral("id3v2 -l '%1'").arg(mp3));
    for (const char* text : {"Title  : Kurz", "Langer Titel", "TYER", "2021"})
        EXPECT_TRUE(listed.contains(QString::fromLatin1(text))) << listed.toStdString();
    Output(QStringLiteral("id3v2 -t 'Neu' -a 'Wer' -g 8 -y 2003 --TBPM 124 '%1'").arg(mp3));
    const auto record = ReadTitleFields(tags, mp3);
    ASSERT_TRUE(record.has_value());
    EXPECT_EQ((QStringList{record->Titel, record->Stil, record->Jahr, record->Extra4}),
              QStringLiteral("Neu|Jazz|2003|124").split(u'|'));
}

} // namespace
} // namespace kalvo
