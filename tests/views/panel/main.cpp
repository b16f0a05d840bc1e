#include "unit/platform/linux/x11/XDesktop.h"
#include "views/ViewSetup.h"

#include <QApplication>

#include <gmock/gmock.h>

/// Runs the tests of a window on an X server of their own, with a view of the program in it.
int main(int argc, char** argv) {
    ::testing::InitGoogleMock(&argc, argv);
    if (GTEST_FLAG_GET(list_tests)) {
        return RUN_ALL_TESTS();
    }
    const quorvin::testing::XServer server;
    qputenv("DISPLAY", server.display());
    qputenv("QT_QPA_PLATFORM", "xcb");
    const QApplication application(argc, argv);
    quorvin::setUpViews();
    return RUN_ALL_TESTS();
}
