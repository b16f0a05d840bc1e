#include "platform/linux/posix/BlockingCommand.h"

#include <QProcess>

namespace quorvin {

std::optional<QByteArray> runAndWaitForOutput(const QString& program,
                                              const QStringList& arguments) {
    constexpr int withoutLimit = -1;
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(program, arguments);
    if (!process.waitForStarted(withoutLimit)) {
        return std::nullopt;
    }
    process.waitForFinished(withoutLimit);
    return process.readAllStandardOutput();
}

} // namespace quorvin
