#pragma once

#include "platform/linux/terminals/TerminalProcesses.h"
#include "platform/linux/terminals/TerminalWindows.h"

#include <QByteArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include <optional>

/// The published protocol of kitty's remote control.
namespace quorvin::kittyProtocol {

/// A command for kitty.
[[nodiscard]] QByteArray request(const QString& command, const QJsonObject& payload);

/// Whether what was received so far is a whole answer.
[[nodiscard]] bool isWhole(const QByteArray& answer);

/// What a whole answer gives; absent when kitty refuses and when it is no answer.
[[nodiscard]] std::optional<QJsonValue> data(const QByteArray& answer);

/// A part of a tab in a window of the desktop.
struct Window {
    int id = 0;
    WindowID systemWindow = 0;
};

/// The window that shows the tty, by what the command "ls" gives.
[[nodiscard]] std::optional<Window> windowOn(const QString& tty, const QJsonValue& listing,
                                             const TerminalProcesses& processes);

} // namespace quorvin::kittyProtocol
