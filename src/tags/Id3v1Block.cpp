#include "tags/Id3v1Block.h"

#include "base/AnsiText.h"
#include "tags/TagText.h"

namespace kalvo {

namespace {

constexpr char kNoGenre = '\xFF';
constexpr int kCommentAt = 97;
constexpr int kTrackAt = 126;
constexpr int kGenreAt = 127;

struct Place {
    int start;
    int width;
};

Place PlaceOf(Id3v1Block::Field field, bool hasTrack) {
    switch (field) {
    case Id3v1Block::Field::Title:
        return {3, 30};
    case Id3v1Block::Field::Artist:
        return {33, 30};
    case Id3v1Block::Field::Album:
        return {63, 30};
    case Id3v1Block::Field::Year:
        return {93, 4};
    case Id3v1Block::Field::Comment:
        return {kCommentAt, hasTrack ? 28 : 30};
    case Id3v1Block::Field::Track:
        return {kTrackAt, 1};
    case Id3v1Block::Field::Genre:
        break;
    }
    return {kGenreAt, 1};
}

} // namespace

Id3v1Block::Id3v1Block(const QByteArray& lastBytes) {
    if (lastBytes.size() >= kSize && lastBytes.last(kSize).startsWith("TAG"))
        bytes_ = lastBytes.last(kSize);
}

bool Id3v1Block::HasTrack() const {
    return IsPresent() && bytes_.at(kTrackAt - 1) == 0 && bytes_.at(kTrackAt) != 0;
}

QString Id3v1Block::Version() const {
    if (!IsPresent())
        return {};
    return HasTrack() ? QStringLiteral("1.1") : QStringLiteral("1.0");
}

QString Id3v1Block::Text(Field field) const {
    if (!IsPresent())
        return {};
    const auto place = PlaceOf(field, HasTrack());
    if (field == Field::Track)
        return HasTrack() ? QString::number(static_cast<unsigned char>(bytes_.at(kTrackAt))) : QString();
    if (field == Field::Genre)
        return TagText::GenreAt(static_cast<unsigned char>(bytes_.at(kGenreAt)));
    QByteArray text = bytes_.mid(place.start, place.width);
    if (const auto end = text.indexOf('\0'); end >= 0)
        text.truncate(end);
    const QString decoded = AnsiText::Decode(text).trimmed();
    return field == Field::Year && decoded.count(u'0') == decoded.size() ? QString() : decoded;
}

void Id3v1Block::SetText(Field field, const QString& text) {
    if (!IsPresent())
        bytes_ = QByteArray("TAG").leftJustified(kSize - 1, '\0') + kNoGenre;
    const auto place = PlaceOf(field, HasTrack());
    QByteArray bytes;
    if (field == Field::Track) {
        const int track = text.section(u'/', 0, 0).toInt();
        bytes = QByteArray(1, track >= 1 && track <= 255 ? static_cast<char>(track) : '\0');
        bytes_[kTrackAt - 1] = '\0';
    } else if (field == Field::Genre) {
        bytes = QByteArray(1, static_cast<char>(TagText::GenreIndex(text)));
    } else {
        bytes = AnsiText::EncodeCut(text, place.width);
    }
    bytes_.replace(place.start, place.width, bytes.leftJustified(place.width, '\0', true));
}

} // namespace kalvo
