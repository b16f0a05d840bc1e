#pragma once

#include <QString>
#include <QStringList>

namespace quorvin {

/// What varies from one run of the engine to the next.
struct WhisperCommand {
    QString modelPath;
    QString wavPath;
    /// A code that the engine isn't known to support stands for "auto".
    QString language;
    bool translateToEnglish = false;
    /// Logical processors of the machine.
    int processorCount = 1;
};

/// Threads for one run: 4 on up to nine processors, then half of them, at most 8.
[[nodiscard]] int threadCount(int processorCount);

/// The arguments of the engine in their order, the program's name not among them.
[[nodiscard]] QStringList commandLineArguments(const WhisperCommand& command);

} // namespace quorvin
