#pragma once

#include "gallery/GalleryDesk.h"

#include <gtest/gtest.h>

#include <memory>

namespace kalvo {

/** One desk for all tests: its windows are opened anew each time. */
struct GalleryTest : ::testing::Test {
    static void SetUpTestSuite() { desk = std::make_unique<test::GalleryDesk>(); }
    static void TearDownTestSuite() { desk.reset(); }
    void TearDown() override { EXPECT_EQ(desk->UnexpectedQuestions(), QStringList()); }

    inline static std::unique_ptr<test::GalleryDesk> desk;
};

} // namespace kalvo
