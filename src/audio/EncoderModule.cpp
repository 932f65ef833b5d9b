#include "audio/EncoderLibraryImpl.h"

#include <exception>

/** The module's one entry; null when memory is short. The caller owns the library. */
extern "C" __attribute__((visibility("default"))) kalvo::audio::EncoderLibrary* CreateEncoderLibrary() {
    try {
        return new kalvo::audio::EncoderLibraryImpl;
    } catch (const std::exception&) {
        return nullptr;
    }
}
