#include "app/Program.h"

#include <QtGlobal>

/// The program, but that a test says where it asks for updates.
int main(int argc, char** argv) {
    return quorvin::runProgram(argc, argv, qEnvironmentVariable("QUORVIN_TEST_UPDATE_ENDPOINT"));
}
