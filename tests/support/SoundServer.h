#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <sys/types.h>

namespace quorvin::testing {

/// A sound server of the test's own: private directories, no hardware, null sinks instead. While it
/// exists the process's environment leads every client to it, running or not.
class SoundServer {
public:
    SoundServer();
    ~SoundServer();
    SoundServer(const SoundServer&) = delete;
    SoundServer& operator=(const SoundServer&) = delete;

    /// Starts it with these modules and returns when it serves.
    void start(const QStringList& modules);
    /// As a crash would.
    void kill();
    /// Stops the process without closing anything, until `thaw`.
    void freeze();
    void thaw();

    /// Has the server run a command of its own language and returns what it prints.
    QString command(const QString& line);

private:
    QTemporaryDir m_directory;
    QString m_address;
    pid_t m_process = -1;
    int m_console = -1; // a socket that is the server's standard input and output
    int m_commands = 0;
};

/// Module lines. A microphone is a source that gives back what a sink plays.
[[nodiscard]] QString sinkModule(const QString& sink, int rate, int channels);
[[nodiscard]] QString microphoneModule(const QString& source, const QString& sink,
                                       const QString& description);
/// A sine in every channel of a sink.
[[nodiscard]] QString toneModule(const QString& sink, int frequency);

} // namespace quorvin::testing
