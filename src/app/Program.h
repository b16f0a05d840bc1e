#pragma once

#include <QString>

namespace quorvin {

/// The whole program, from start to end. Returns the exit status.
/// `updateEndpoint` is where the manifest of the newest build is kept.
[[nodiscard]] int runProgram(int argc, char** argv, const QString& updateEndpoint);

} // namespace quorvin
