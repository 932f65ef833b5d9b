#include "audio/AudioLibraryImpl.h"

#include <exception>

/** The module's one entry; null when memory is short. The caller owns the library. */
extern "C" __attribute__((visibility("default"))) kalvo::audio::AudioLibrary* CreateAudioLibrary() {
    try {
        return new kalvo::audio::AudioLibraryImpl;
    } catch (const std::exception&) {
        return nullptr;
    }
}
