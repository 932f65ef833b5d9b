#pragma once

#include <QtGlobal>

namespace kalvo {

/** What AUDIOAnalyzeFileW found; 0 is a file that cannot be read as sound. */
enum class AudioFormat : int { Unknown = 0, Mpeg = 1, OggVorbis = 2, OggOpus = 3 };

/** A frame identifier as a number: its four characters, the first in the highest byte. */
constexpr quint32 FrameId(const char (&name)[5]) {
    const auto byte = [&name](int index) { return static_cast<quint32>(static_cast<unsigned char>(name[index])); };
    return byte(0) << 24U | byte(1) << 16U | byte(2) << 8U | byte(3);
}

} // namespace kalvo
