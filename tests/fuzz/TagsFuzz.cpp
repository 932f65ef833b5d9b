// Any bytes as a music file: analysing and reading every field must end, in bounded memory, without a fault.

#include "tags/HoverInfo.h"
#include "tags/clsAudioGenie.h"

#include <QString>

#include <cstdint>
#include <sys/mman.h>
#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const int memory = ::memfd_create("tags", 0);
    if (memory < 0 || ::write(memory, data, size) != static_cast<ssize_t>(size)) {
        ::close(memory);
        return 0;
    }
    const QString path = QStringLiteral("/proc/self/fd/%1").arg(memory);
    kalvo::clsAudioGenie tags;
    if (tags.AUDIOAnalyzeFileW(path) != kalvo::AudioFormat::Unknown) {
        for (int index = 0; index <= tags.ID3V2GetFrameCountW(kalvo::FrameId("APIC")) + 1; ++index)
            tags.ID3V2GetPictureArrayW(index);
        if (tags.AUDIOGetDurationW() < 0)
            __builtin_trap();
        kalvo::ReadHoverInfo(tags, path);
    }
    ::close(memory);
    return 0;
}
