#include "FakeSink.h"
#include "OfflineDesk.h"
#include "audio/EncoderLibraryImpl.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

thread_local bool watching = false;
std::atomic<int> allocations{0};

} // namespace

void* operator new(std::size_t size) {
    if (watching)
        ++allocations;
    if (void* memory = std::malloc(size > 0 ? size : 1))
        return memory;
    throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    if (watching)
        ++allocations;
    return std::malloc(size > 0 ? size : 1);
}

void operator delete(void* memory) noexcept {
    if (watching)
        ++allocations;
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}

void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept {
    operator delete(memory);
}

using namespace kalvo::audio;
using namespace kalvo::test;

TEST(RenderAllocationTest, RenderingNeitherAllocatesNorFreesWhateverHappens) {
    OfflineDesk desk;
    AudioLibrary& library = desk.Audio();
    std::vector<float> out(2 * 512);
    const auto render = [&] {
        for (int i = 0; i < 20; ++i) {
            watching = true;
            library.Render(Output::Main, out.data(), 512);
            watching = false;
        }
    };
    const Handle stream = desk.Play(Sine(440, 0.9, 200000));
    const Handle other = desk.Play(Sine(880, 0.9, 5000, 48000));
    const Handle band = library.ChannelSetFX(stream, EffectType::EqualiserBand);
    const Handle reverb = library.ChannelSetFX(stream, EffectType::Reverb);
    FakeDisk disk;
    EncoderLibraryImpl encoder(disk.Opener());
    ASSERT_NE(encoder.Encode_Start(library, Output::Main, "mix.wav", {}), 0U);
    render();
    EffectParameters parameters;
    parameters.gain = 9;
    parameters.reverbMix = -10;
    ASSERT_TRUE(library.FXSetParameters(band, parameters) && library.FXSetParameters(reverb, parameters));
    ASSERT_TRUE(library.ChannelSetAttributes(stream, 48000, 50, 20));
    render();
    ASSERT_TRUE(library.ChannelSetPosition(stream, 4 * 100000));
    ASSERT_TRUE(library.ChannelSlideAttributes(stream, 40000, 10, -20, 50));
    render();
    ASSERT_TRUE(library.ChannelRemoveFX(stream, reverb) && library.ChannelPause(stream));
    render();
    ASSERT_TRUE(library.ChannelResume(stream) && library.StreamFree(other));
    render();
    ASSERT_TRUE(library.StreamFree(stream));
    render();
    EXPECT_EQ(allocations, 0);
}
