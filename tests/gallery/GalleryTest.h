#pragma once

#include "gallery/GalleryDesk.h"

#include <gtest/gtest.h>

#include <memory>

namespace kalvo::test {

/** One desk for all tests: its windows are opened anew each time. */
struct GalleryTest : ::testing::Test {
    static void SetUpTestSuite() { desk = std::make_unique<gallery::GalleryDesk>(); }
    static void TearDownTestSuite() { desk.reset(); }
    void TearDown() override { EXPECT_EQ(desk->UnexpectedQuestions(), QStringList()); }

    inline static std::unique_ptr<gallery::GalleryDesk> desk;
};

inline void ExpectNone(const QStringList& faults, const QString& name) {
    EXPECT_TRUE(faults.isEmpty()) << name.toStdString() << ":\n  " << faults.join(u"\n  ").toStdString();
}

} // namespace kalvo::test
