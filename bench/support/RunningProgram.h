#pragma once

#include "support/SoundServer.h"

#include <QByteArray>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <chrono>

namespace quorvin::bench {

/// A desktop without a user: a virtual display, a sound server with a microphone that hears a tone,
/// and a home with a speech engine.
class Desktop {
public:
    Desktop();
    ~Desktop();

    [[nodiscard]] const QProcessEnvironment& environment() const { return m_environment; }

private:
    testing::SoundServer m_soundServer;
    QTemporaryDir m_home;
    QProcess m_display;
    QProcessEnvironment m_environment;
};

/// The real program, from its start to the end of this object.
class RunningProgram {
public:
    /// Returns when the first frame has been drawn. Ends the benchmark when there is none.
    explicit RunningProgram(const Desktop& desktop);
    ~RunningProgram();

    /// From the start of the process to the end of its first frame.
    [[nodiscard]] std::chrono::duration<double, std::milli> timeToFirstFrame() const {
        return m_timeToFirstFrame;
    }
    /// Processor time of all its threads so far.
    [[nodiscard]] std::chrono::duration<double> processorTime() const;
    /// Waits until the error stream says `text`.
    void waitFor(const QByteArray& text);

private:
    QProcess m_process;
    QByteArray m_log;
    std::chrono::duration<double, std::milli> m_timeToFirstFrame{};
};

} // namespace quorvin::bench
