#pragma once

#include "support/SoundServer.h"
#include "support/XServer.h"

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

    [[nodiscard]] const QProcessEnvironment& environment() const { return m_environment; }

    /// Presses and releases keys as xdotool names them: "ctrl+grave".
    void press(const QString& keys) const;
    /// Clicks the middle of the compact panel's strip, where the panel stands at first.
    void clickPanel() const;
    /// Clicks the ring in the main window.
    void clickRing() const;
    /// Presses the hot key of the compact mode; from then to the panel's appearance on the screen.
    [[nodiscard]] std::chrono::duration<double, std::milli> timeToPanel() const;

private:
    void run(const QString& program, const QStringList& arguments) const;

    testing::SoundServer m_soundServer;
    QTemporaryDir m_home;
    testing::XServer m_display{
        {QStringLiteral("-screen"), QStringLiteral("0"), QStringLiteral("1280x1024x24")}};
    /// With the sound server's address.
    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
};

/// The real program, from its start to the end of this object.
class RunningProgram {
public:
    /// Returns when the program can take a dictation. Ends the benchmark when it never can.
    explicit RunningProgram(const Desktop& desktop);
    ~RunningProgram();

    /// From the start of a process to the end of its first frame.
    [[nodiscard]] static std::chrono::duration<double, std::milli>
    timeToFirstFrame(const Desktop& desktop);
    /// What it takes of one core over a time that begins after `settling`, in percent.
    [[nodiscard]] double coreShare(std::chrono::seconds settling, std::chrono::seconds span) const;
    [[nodiscard]] double residentMebibytes() const;
    /// Waits until the error stream has said `text` so many times.
    void waitFor(const QByteArray& text, int times = 1);

private:
    explicit RunningProgram(const QProcessEnvironment& environment);

    /// Processor time of all its threads so far.
    [[nodiscard]] std::chrono::duration<double> processorTime() const;

    QProcess m_process;
    QByteArray m_log;
};

} // namespace quorvin::bench
