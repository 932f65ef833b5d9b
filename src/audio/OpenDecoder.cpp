#include "audio/OpenDecoder.h"

#include "audio/Mp3Decoder.h"
#include "audio/OpusDecoder.h"
#include "audio/ReadAheadFile.h"
#include "audio/SoundFileDecoder.h"
#include "audio/VorbisDecoder.h"

#include <array>
#include <string_view>

namespace kalvo::audio {

namespace {

constexpr std::int64_t kMostPadding = 1 << 20;
constexpr std::size_t kTagHeader = 10;

/** Enough for the first packet's name in an OGG page. */
using Head = std::array<unsigned char, 64>;

/** The bytes from `position` on; zeros behind the file's end. */
Head ReadHead(ReadAheadFile& file, std::int64_t position) {
    Head head{};
    if (file.Seek(position))
        file.Read(head.data(), head.size());
    return head;
}

std::string_view Text(const Head& head) {
    return {reinterpret_cast<const char*>(head.data()), head.size()};
}

/** Bytes of the ID3v2 tag that begins with these; 0 = none. */
std::int64_t TagLength(const Head& head) {
    if (Text(head).substr(0, 3) != "ID3" || head[3] == 0xFF || head[4] == 0xFF)
        return 0;
    std::int64_t length = 0;
    for (std::size_t i = 6; i < kTagHeader; ++i)
        length = length << 7 | (head[i] & 0x7F);
    const bool footer = (head[5] & 0x10) != 0;
    return length + static_cast<std::int64_t>(footer ? 2 * kTagHeader : kTagHeader);
}

/** Where the first byte stands that is not zero; `position` itself when there are too many zeros. */
std::int64_t SkipZeros(ReadAheadFile& file, std::int64_t position) {
    std::array<unsigned char, 4096> piece{};
    file.Seek(position);
    while (file.Tell() < position + kMostPadding) {
        const std::int64_t start = file.Tell();
        const std::int64_t got = file.Read(piece.data(), piece.size());
        for (std::int64_t i = 0; i < got; ++i) {
            if (piece[static_cast<std::size_t>(i)] != 0)
                return start + i;
        }
        if (got <= 0)
            break;
    }
    return position;
}

/** Where the sound begins, behind tags and padding. A tag that claims more than the file is taken for damaged. */
std::int64_t FindStart(ReadAheadFile& file) {
    std::int64_t start = SkipZeros(file, 0);
    while (const std::int64_t length = TagLength(ReadHead(file, start))) {
        if (start + length >= file.Size())
            return start + static_cast<std::int64_t>(kTagHeader);
        start = SkipZeros(file, start + length);
    }
    return start;
}

} // namespace

std::unique_ptr<Decoder> OpenDecoder(ReadAheadFile& file, LengthNeed need) {
    const std::int64_t start = FindStart(file);
    const Head head = ReadHead(file, start);
    const std::string_view text = Text(head);
    std::unique_ptr<Decoder> decoder;
    if (text.substr(0, 4) == "OggS") {
        if (text.find("OpusHead") != std::string_view::npos)
            decoder = OpusDecoder::Open(file);
        else
            decoder = VorbisDecoder::Open(file);
        return decoder;
    }
    if (text.substr(0, 4) == "RIFF" || text.substr(0, 4) == "RF64")
        decoder = SoundFileDecoder::Open(file);
    if (!decoder) // also a WAV around MPEG audio
        decoder = Mp3Decoder::Open(file, start, need);
    return decoder;
}

} // namespace kalvo::audio
