// The viewer's widget tests run on Qt's offscreen platform: no display is needed.
#include <gtest/gtest.h>

#include <QApplication>

#include "qzhost/MainLoop.h"

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qzhost::MainLoop::Get().AdoptCurrentThread();
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
