// Tags written by other programs and by us, read by us and by other programs.

#include "tags/TagTest.h"
#include "tags/TitleFields.h"

#include <QFile>
#include <QStringEncoder>
#include <array>
#include <cstdio>

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;
using enum TagField;

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

using TagMatrixTest = TagTest;

TEST_F(TagMatrixTest, EveryVersionAndEncodingReadsTheSame) {
    const QString title = u"Größer als – ja"_s;
    const QByteArray utf8 = title.toUtf8();
    const QByteArray windows = QByteArray("\0Gr\xF6\xDF", 5) + "er als \x96 ja";
    QStringEncoder encoder(QStringEncoder::Utf16BE, QStringEncoder::Flag::WriteBom);
    const QByteArray wide = encoder(title);
    const struct {
        const char* name;
        int version;
        QByteArray content;
    } cases[] = {{"2.2 1252", 2, windows},
                 {"2.2 UTF-16", 2, '\1' + wide},
                 {"2.3 UTF-8 told as Latin-1", 3, '\0' + utf8},
                 {"2.4 ends with zeros", 4, '\3' + utf8 + QByteArray(2, '\0')}};
    const QByteArray sound = BareSound();
    for (const auto& one : cases) {
        SCOPED_TRACE(one.name);
        const bool old = one.version == 2;
        const QByteArray year = old ? "TYE" : one.version == 3 ? "TYER" : "TDRC";
        const QByteArray tag = Id3v2(
            one.version,
            {{old ? "TT2" : "TIT2", one.content}, {old ? "TCO" : "TCON", Latin1("(17)")}, {year, Latin1("2019")}});
        ASSERT_EQ(tags.AUDIOAnalyzeFileW(folder.Write(u"a.mp3"_s, tag + sound)), AudioFormat::Mpeg);
        EXPECT_EQ(Text("TIT2"), title);
        EXPECT_EQ(tags.ID3V2GetGenreW(), u"Rock"_s);
        EXPECT_EQ(Text("TYER"), u"2019"_s);
        EXPECT_EQ(tags.ID3V2GetVersionW(), u"2.%1"_s.arg(one.version));
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
    const QString script = folder.Write(u"other.py"_s, kOtherLibrary);
    const auto other = [&script](const QString& what, const QString& path, const char* kind = "") {
        return Output(u"/usr/bin/python3 %1 %2 '%3' %4"_s.arg(script, what, path, QString::fromLatin1(kind)));
    };
    const struct {
        const char* file;
        const char* kind; ///< ID3v2 version and encoding
    } cases[] = {{"a.mp3", "3 0"}, {"b.mp3", "3 1"}, {"c.mp3", "4 0"}, {"d.mp3", "4 1"},
                 {"e.mp3", "4 2"}, {"f.mp3", "4 3"}, {"g.ogg", ""},    {"h.opus", ""}};
    for (const auto& one : cases) {
        SCOPED_TRACE(std::string(one.file) + " " + one.kind);
        const QString made = Sound(QString::fromLatin1(one.file));
        const QString path = QString(made).replace(u".opus"_s, u".ogg"_s);
        ASSERT_TRUE(path == made || QFile::rename(made, path));
        other(u"write"_s, path, one.kind);
        const TitleRecord record = ReadTitleFields(tags, path).value_or(TitleRecord{});
        const QString dash = QString::fromLatin1(one.kind).endsWith(u'0') ? u"-"_s : u"–"_s;
        EXPECT_EQ(record.Titel, u"Größer %1 ja"_s.arg(dash));
        EXPECT_EQ(QStringList({record.Interpret, record.Album, record.Stil, record.Jahr, record.Extra3, record.Extra4,
                               record.Bewertung, record.Extra1, tags.ID3V2GetLyricW(1)})
                      .join(u'|'),
                  u"Wer|Album|Rock|2019|3/12|128|sehr gut|tanzbar|Strophe"_s);
        EXPECT_EQ(tags.ID3V2GetPictureArrayW(1), QByteArray("\xFF\xD8\xFF") + "bild");
        EXPECT_EQ(tags.ID3V2GetPictureDescriptionW(1) + tags.ID3V2GetPictureMimeW(1), u"Hülleimage/jpeg"_s);
        EXPECT_EQ(tags.ID3V2GetPictureTypeW(1), 4);

        TagEdit edit;
        edit.pictures = QList<TagPicture>{{QByteArray("\x89PNG\r\n", 6), u"image/png"_s, u"Rückseite"_s, 4}};
        ASSERT_EQ(WriteTagEdit(tags, path, edit).reason, QString());
        ASSERT_EQ(Save(path, {{Title, u"Ändern – 日本"_s},
                              {Artist, u"Neu"_s},
                              {Album, u"Zwei"_s},
                              {Genre, u"Jazz"_s},
                              {Year, u"1999"_s},
                              {Track, u"7"_s},
                              {Bpm, u"99"_s},
                              {Rating, u"gut"_s},
                              {Comment, u"leise"_s},
                              {Lyric, u"Refrain"_s}}),
                  QString());
        EXPECT_EQ(other(u"show"_s, path).trimmed(),
                  u"Ändern – 日本|Neu|Zwei|Jazz|1999|7|99|gut|leise|Refrain|image/png|Rückseite|4|6"_s);
    }
}

} // namespace
} // namespace kalvo::test
