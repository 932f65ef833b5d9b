#include "audio/AudioLibrary.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>

using namespace kalvo::audio;

TEST(ModuleTest, IsLoadedByItsNameAndTellsItsVersion) {
    const char* folder = std::getenv("KALVO_BIN");
    ASSERT_NE(folder, nullptr);
    void* module = dlopen((std::string(folder) + "/bass.dll").c_str(), RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(module, nullptr) << dlerror();
    const auto create = reinterpret_cast<Factory>(dlsym(module, kFactoryName));
    ASSERT_NE(create, nullptr);
    const std::unique_ptr<AudioLibrary> library(create());
    EXPECT_EQ(library->GetVersion(), 0x00000002U);
    EXPECT_TRUE(library->Init(Output::Main, kOffline, 44100, 1024));
    float silence[64];
    EXPECT_TRUE(library->Render(Output::Main, silence, 32));
}
