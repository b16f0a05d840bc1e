#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>
#include <vector>

namespace quorvin::testing {

/// An X server, a message bus and a home directory for this program and all that it starts, put into
/// its environment. Made before the application object, which then is on that display.
class TerminalDesktop {
public:
    TerminalDesktop();
    ~TerminalDesktop();
    TerminalDesktop(const TerminalDesktop&) = delete;
    TerminalDesktop& operator=(const TerminalDesktop&) = delete;

    /// Starts the window manager and waits for it.
    [[nodiscard]] bool startManager();

    /// Starts a program that is ended with this object.
    QProcess& start(const QString& program, const QStringList& arguments);
    /// Runs a program to its end and returns what it prints.
    [[nodiscard]] QByteArray run(const QString& program, const QStringList& arguments,
                                 const QByteArray& input = {});

    [[nodiscard]] QString path(const QString& name) const { return m_home.filePath(name); }

private:
    void startServer();
    void startBus();

    QTemporaryDir m_home;
    std::vector<std::unique_ptr<QProcess>> m_processes; // ended in the opposite order
};

/// One stand-in agent: its process, and what has come to it.
class Agent {
public:
    /// The command for a terminal to run: an agent of this name ("claude" or "opencode").
    Agent(const TerminalDesktop& desktop, const QString& name);

    [[nodiscard]] QStringList command() const;
    [[nodiscard]] bool isReady() const;
    [[nodiscard]] QByteArray received() const;

private:
    QString m_program;
    QString m_file;
};

} // namespace quorvin::testing
