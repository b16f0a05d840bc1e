#include "app/Program.h"

int main(int argc, char** argv) {
    return quorvin::runProgram(argc, argv, QStringLiteral(QUORVIN_UPDATE_ENDPOINT));
}
