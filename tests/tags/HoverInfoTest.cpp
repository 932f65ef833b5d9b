#include "tags/HoverReader.h"

#include "support/WaitUntil.h"
#include "tags/TagTest.h"

namespace kalvo::test {
namespace {

using namespace Qt::StringLiterals;

struct HoverInfoTest : TagTest {
    QString Tagged(const QString& name) {
        QString path = Sound(name);
        EXPECT_EQ(Save(path, {{TagField::Album, u"Regen"_s},
                              {TagField::Year, u"2018"_s},
                              {TagField::Genre, u"Pop"_s},
                              {TagField::Rating, u"gut"_s},
                              {TagField::V1Comment, u"eins"_s},
                              {TagField::Comment, u"zwei"_s}}),
                  QString());
        return path;
    }
};

TEST_F(HoverInfoTest, IsReadBesideTheWindowAndKeptUntilTheFileChanges) {
    EXPECT_EQ(ReadHoverInfo(tags, Tagged(u"a.ogg"_s)).comment, u"zwei"_s);
    const QString path = Tagged(u"b.mp3"_s);
    HoverReader reader;
    QStringList ready;
    QObject::connect(&reader, &HoverReader::Ready, &reader, [&ready](const QString& done) { ready += done; });
    EXPECT_EQ(reader.Find(path), nullptr);
    ASSERT_TRUE(WaitUntil([&] { return ready.contains(path); }));
    ASSERT_NE(reader.Find(path), nullptr);
    EXPECT_EQ(HoverText(u"Wer"_s, u"Was"_s, *reader.Find(path)),
              u"Wer - Was\r\n\r\nAlbum:          Regen\r\nJahr:             2018\r\n"
              "Stil:               Pop\r\nBewertung:  gut\r\nKommentar:  eins"_s);
    reader.Forget(path);
    EXPECT_EQ(reader.Find(path), nullptr);
    for (int other = 0; other < 50; ++other)
        reader.Find(folder.Path(QString::number(other)));
    const QString last = folder.Path(u"49"_s);
    ASSERT_TRUE(WaitUntil([&] { return ready.contains(last); })) << "the last wish is read";
    EXPECT_LT(ready.size(), 50) << "titles that the pointer has left are passed over";
}

} // namespace
} // namespace kalvo::test
