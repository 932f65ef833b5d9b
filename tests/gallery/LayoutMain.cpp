// The layout test runs on the smallest screen that the program works on.

#include "gallery/GalleryScreen.h"

#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    const kalvo::gallery::GalleryScreen screen(QSize(800, 600));
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
