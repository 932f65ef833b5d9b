#include "widgets/DragTypes.h"

#include <QMimeData>
#include <gmock/gmock.h>

namespace kalvo {
namespace {

using namespace Qt::StringLiterals;

const DragTypes::Rows rows{{u"Grüße"_s, QString(), u"a\tb\n"_s}, {}, {u"x"_s}};

TEST(DragTypesTest, RowsComeBackAsTheyWere) {
    EXPECT_EQ(DragTypes::Unpack(DragTypes::Pack(rows)), rows);
    EXPECT_EQ(DragTypes::Unpack(DragTypes::Pack({})), DragTypes::Rows());
}

TEST(DragTypesTest, DamagedBytesGiveNothing) {
    const QByteArray whole = DragTypes::Pack(rows);
    for (qsizetype length = 0; length < whole.size(); ++length)
        EXPECT_FALSE(DragTypes::Unpack(whole.left(length))) << length;
    EXPECT_FALSE(DragTypes::Unpack(whole + 'x'));
    EXPECT_FALSE(DragTypes::Unpack("KALx" + whole.mid(4)));
}

TEST(DragTypesTest, TypesAreKeptApart) {
    QMimeData data;
    DragTypes::Put(data, DragTypes::PlaylistEntries(), rows);
    EXPECT_EQ(DragTypes::Take(&data, DragTypes::PlaylistEntries()), rows);
    EXPECT_FALSE(DragTypes::Take(&data, DragTypes::ArchiveTitles()));
    EXPECT_FALSE(DragTypes::Take(nullptr, DragTypes::ArchiveTitles()));
}

} // namespace
} // namespace kalvo
