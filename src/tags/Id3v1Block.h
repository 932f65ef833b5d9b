#pragma once

#include <QByteArray>
#include <QString>

namespace kalvo {

/**
 * The 128 bytes of an ID3v1 tag. A changed field leaves every other byte as it is. Texts are Windows-1252, or UTF-8
 * where that cannot hold them.
 */
class Id3v1Block {
public:
    enum class Field { Title, Artist, Album, Year, Comment, Track, Genre };
    static constexpr int kSize = 128;

    /** No tag. */
    Id3v1Block() = default;
    /** From the last bytes of a file; no tag when they are none. */
    explicit Id3v1Block(const QByteArray& lastBytes);

    bool IsPresent() const { return !bytes_.isEmpty(); }
    /** "1.0", or "1.1" with a track number; empty without a tag. */
    QString Version() const;
    /** Without blanks at the ends; empty without a tag. */
    QString Text(Field field) const;
    /** Cuts what does not fit; creates the tag. A track outside 1..255 and a genre that has no number are none. */
    void SetText(Field field, const QString& text);
    /** Empty without a tag. */
    const QByteArray& Bytes() const { return bytes_; }

private:
    bool HasTrack() const;

    QByteArray bytes_;
};

} // namespace kalvo
