#include "platform/qt/WatchedProcess.h"

#include <QPointer>
#include <QProcess>

#include <memory>

namespace quorvin {

Task<std::optional<WatchedResult>> runWatched(Scheduler& scheduler, QObject& owner, QString program,
                                              QStringList arguments, Scheduler::Duration limit) {
    auto* const process = new QProcess(&owner);
    process->setProcessChannelMode(QProcess::MergedChannels);
    process->setStandardInputFile(QProcess::nullDevice());

    // Every way out leads over the end of the process object, the end of its owner included.
    const auto result = std::make_shared<std::optional<WatchedResult>>();
    Pending<std::optional<WatchedResult>> pending;
    QObject::connect(process, &QObject::destroyed,
                     [pending, result]() mutable { pending.resolve(std::move(*result)); });
    QObject::connect(
        process, &QProcess::finished, process,
        [process, result](int code, QProcess::ExitStatus status) {
            *result = {process->readAll(), status == QProcess::NormalExit && code == 0};
            process->deleteLater();
        });
    QObject::connect(process, &QProcess::errorOccurred, process,
                     [process](QProcess::ProcessError error) {
                         if (error == QProcess::FailedToStart) {
                             process->deleteLater();
                         }
                     });
    scheduler.postDelayed(limit, [watched = QPointer(process)] {
        if (watched) {
            watched->terminate();
        }
    });
    process->start(program, arguments);
    co_return co_await pending;
}

} // namespace quorvin
