#pragma once

#include <QString>
#include <QStringList>

namespace quorvin {

/// How one system puts a downloaded build in the place of the installed bundle: a script for bash
/// that outlives the program. This holds what no two systems share of it.
struct UpdateScript {
    /// File name of the download.
    QString imageName;
    /// The shell variable with the path of the download. The bundle's path is in "APP".
    QString imageVariable;
    /// Lines that run at once, and those that run when the program is gone. The first one that
    /// fails ends the script.
    QStringList preparation;
    QStringList replacement;

    /// The whole script, which waits for the process without limit of time. Lines are separated by
    /// line breaks, with none at the end. The paths are data, whatever characters they have.
    [[nodiscard]] QString text(const QString& imagePath, const QString& appPath,
                               int processIdentifier) const;
};

/// For a bundle that comes as a disk image, with the tools of macOS.
[[nodiscard]] UpdateScript diskImageUpdateScript();
/// For a bundle that comes as a compressed tar archive, with the tools of GNU and Linux.
[[nodiscard]] UpdateScript archiveUpdateScript();

/// What /bin/bash is given to run the script at this path in the background and to end at once.
[[nodiscard]] QStringList updateLaunchArguments(QString scriptPath);

} // namespace quorvin
