#include "views/support/ViewApplication.h"

#include <gmock/gmock.h>

/// Runs the tests of views without a display, as the program sets its views up.
int main(int argc, char** argv) {
    ::testing::InitGoogleMock(&argc, argv);
    const auto application = quorvin::testing::makeViewApplication(argc, argv);
    return RUN_ALL_TESTS();
}
