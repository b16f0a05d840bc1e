#include "platform/linux/posix/PosixUpdateInstaller.h"

#include "platform/linux/posix/Spawn.h"

#include <cerrno>

#include <sys/wait.h>

namespace quorvin {

void PosixUpdateInstaller::launch(const QString& scriptPath) {
    const pid_t shell = spawn(QStringLiteral("/bin/bash"), updateLaunchArguments(scriptPath),
                              {.session = SpawnOptions::Session::own});
    // It ends as soon as it has started the script.
    while (::waitpid(shell, nullptr, 0) == -1 && errno == EINTR) {
    }
}

} // namespace quorvin
