#include "audio/AudioLibrary.h"
#include "audio/EncoderLibrary.h"

#include "support/TestFolder.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

namespace kalvo::audio {
namespace {

template<class Factory>
Factory Load(const char* file, const char* factory) {
    const std::string path = qEnvironmentVariable("KALVO_BIN").toStdString() + '/' + file;
    void* module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    EXPECT_NE(module, nullptr) << dlerror();
    return module != nullptr ? reinterpret_cast<Factory>(dlsym(module, factory)) : nullptr;
}

TEST(ModuleTest, BothAreLoadedByNameAndWorkTogether) {
    const auto createAudio = Load<Factory>("bass.dll", kFactoryName);
    const auto createEncoder = Load<EncoderFactory>("BASSenc.dll", kEncoderFactoryName);
    ASSERT_TRUE(createAudio != nullptr && createEncoder != nullptr);
    const std::unique_ptr<AudioLibrary> library(createAudio());
    const std::unique_ptr<EncoderLibrary> encoder(createEncoder());
    ASSERT_TRUE(library->Init(Output::Main, kOffline, 44100, 1024));
    const kalvo::test::TestFolder folder;
    const std::string path = folder.Path(QStringLiteral("mix.mp3")).toStdString();
    EncodeSettings settings;
    settings.format = EncodeFormat::Mp3;
    const Handle recording = encoder->Encode_Start(*library, Output::Main, path, settings);
    ASSERT_NE(recording, 0U);
    std::vector<float> silence(2 * 44100);
    EXPECT_TRUE(library->Render(Output::Main, silence.data(), 44100));
    EXPECT_TRUE(encoder->Encode_Stop(recording));
    const Handle stream = library->StreamCreateFile(Output::Main, path);
    EXPECT_EQ(library->StreamGetLength(stream), 44100U * 4);
}

} // namespace
} // namespace kalvo::audio
