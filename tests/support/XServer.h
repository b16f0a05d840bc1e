#pragma once

#include <QByteArray>
#include <QProcess>
#include <QStringList>

namespace quorvin::testing {

/// An X server without a screen, for one test alone.
class XServer {
public:
    explicit XServer(const QStringList& extraArguments = {});
    ~XServer() { stop(); }
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;

    /// As for the variable DISPLAY; empty when the server could not be started.
    [[nodiscard]] QByteArray display() const { return m_display; }
    void stop();

private:
    QProcess m_process;
    QByteArray m_display;
};

} // namespace quorvin::testing
