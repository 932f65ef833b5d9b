#include "tags/GuardedStream.h"

#include <id3v2extendedheader.h>
#include <id3v2frame.h>
#include <id3v2header.h>
#include <id3v2synchdata.h>

#include <algorithm>
#include <cstring>

namespace kalvo {

namespace {

using TagLib::ByteVector;

/** Compressed frames of a tag, in all; they unfold to a thousand times as much. */
constexpr unsigned kMostCompressed = 32768;
constexpr unsigned kHeaderSize = 10;
constexpr long kPageSize = 4096;
constexpr long kLargeRead = 2 * kPageSize; ///< from here on past the pages

/** The library's own reading of frame headers, which is not public. */
class FrameWalk : public TagLib::ID3v2::Frame {
public:
    struct Found {
        unsigned position; ///< of the header
        unsigned compressed;
        bool nested;
    };

    static std::vector<Found> Walk(const ByteVector& frames, unsigned version) {
        std::vector<Found> found;
        const unsigned headerSize = version < 3 ? 6 : 10;
        unsigned position = 0;
        while (position + headerSize < frames.size() && frames[position] != 0) {
            const ByteVector rest = frames.mid(position);
            const Header header(rest, version);
            const unsigned size = header.frameSize();
            if (size == 0 || size > rest.size())
                break;
            const ByteVector id = header.frameID();
            const bool chapter = id == "CHAP" || id == "CTOC";
            const ByteVector body = rest.mid(headerSize, size);
            const bool nested = chapter && (body.find("CHAP") >= 0 || body.find("CTOC") >= 0);
            if (header.compression() || nested)
                found.push_back({position, header.compression() ? size : 0, nested});
            position += headerSize + size;
        }
        return found;
    }
};

/** Takes out the zeros of unsynchronisation; where[i] is the place of byte i in the encoded data. */
ByteVector Decoded(const ByteVector& encoded, std::vector<unsigned>& where) {
    std::string bytes;
    for (unsigned i = 0; i < encoded.size(); ++i) {
        bytes.push_back(encoded[i]);
        where.push_back(i);
        if (encoded[i] == '\xFF' && i + 1 < encoded.size() && encoded[i + 1] == 0)
            ++i;
    }
    return {bytes.data(), static_cast<unsigned>(bytes.size())};
}

} // namespace

GuardedStream::GuardedStream(const QString& path) : name_(QFile::encodeName(path).toStdString()), file_(path) {
    if (file_.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        length_ = static_cast<long>(file_.size());
        FindHazards();
    }
    left_ = kBudget;
    seek(0);
}

void GuardedStream::FindHazards() {
    seek(0);
    const ByteVector head = readBlock(kHeaderSize);
    if (head.size() < kHeaderSize || !head.startsWith("ID3"))
        return;
    const TagLib::ID3v2::Header header(head);
    ByteVector frames = readBlock(header.tagSize());
    if (header.majorVersion() < 3) // without compression and chapters
        return;
    std::vector<unsigned> where;
    if (header.unsynchronisation() && header.majorVersion() == 3)
        frames = Decoded(frames, where);
    unsigned start = 0;
    if (header.extendedHeader()) {
        TagLib::ID3v2::ExtendedHeader extended;
        extended.setData(frames);
        if (extended.size() <= frames.size())
            start = extended.size();
    }
    unsigned compressed = 0;
    for (const auto& found : FrameWalk::Walk(frames.mid(start), header.majorVersion())) {
        compressed += found.compressed;
        if (!found.nested && compressed <= kMostCompressed)
            continue;
        const auto fileAt = [&](unsigned position) {
            return static_cast<long>(kHeaderSize) + static_cast<long>(where.empty() ? position : where[position]);
        };
        const unsigned flags = start + found.position + 9;
        patches_.push_back({fileAt(start + found.position), 'X'});
        patches_.push_back({fileAt(flags), 0});
    }
}

ByteVector GuardedStream::readBlock(unsigned long length) {
    const long position = position_;
    const auto rest = static_cast<unsigned long>(std::max(0L, length_ - position));
    const unsigned long taken = std::min({length, rest, left_});
    ByteVector block(static_cast<unsigned>(taken), '\0');
    Read(block.data(), position, static_cast<long>(taken));
    left_ -= taken;
    position_ += static_cast<long>(taken);
    for (const Patch& patch : patches_) {
        if (patch.position >= position && patch.position < position_)
            block[static_cast<int>(patch.position - position)] = patch.byte;
    }
    return block;
}

/** What cannot be read stays as it is. */
void GuardedStream::Read(char* bytes, long position, long length) {
    if (length > kLargeRead) {
        if (file_.seek(position))
            file_.read(bytes, length);
        return;
    }
    while (length > 0) {
        const QByteArray& page = PageAt(position / kPageSize);
        const long start = position % kPageSize;
        const long piece = std::min({length, kPageSize - start, static_cast<long>(page.size()) - start});
        if (piece <= 0)
            return;
        std::memcpy(bytes, page.constData() + start, static_cast<std::size_t>(piece));
        bytes += piece;
        position += piece;
        length -= piece;
    }
}

const QByteArray& GuardedStream::PageAt(long number) {
    for (const Page& page : pages_) {
        if (page.number == number)
            return page.bytes;
    }
    Page& page = pages_.at(oldest_);
    oldest_ = (oldest_ + 1) % pages_.size();
    page.number = number;
    page.bytes = file_.seek(number * kPageSize) ? file_.read(kPageSize) : QByteArray();
    return page.bytes;
}

void GuardedStream::seek(long offset, Position from) {
    const long start = from == Beginning ? 0 : from == Current ? position_ : length_;
    if (start + offset >= 0)
        position_ = start + offset;
}

void GuardedStream::writeBlock(const ByteVector& /*data*/) {}
void GuardedStream::insert(const ByteVector& /*data*/, unsigned long /*start*/, unsigned long /*replace*/) {}
void GuardedStream::removeBlock(unsigned long /*start*/, unsigned long /*length*/) {}
void GuardedStream::truncate(long /*length*/) {}

} // namespace kalvo
