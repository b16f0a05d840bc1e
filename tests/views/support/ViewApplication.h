#pragma once

#include <QApplication>

#include <memory>

namespace quorvin::testing {

/// The application around views that software draws and no display shows, set up as the program is.
/// `argc` and `argv` outlive it.
[[nodiscard]] std::unique_ptr<QApplication> makeViewApplication(int& argc, char** argv);

} // namespace quorvin::testing
