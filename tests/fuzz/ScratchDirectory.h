#pragma once

#include "fuzz/Fuzzing.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace quorvin::testing {

/// A directory for the files of one run, in memory where the system has room for files there.
class ScratchDirectory {
public:
    ScratchDirectory() { require(m_directory.isValid(), "there is a directory to write to"); }

    [[nodiscard]] QString path(const QString& name) const { return m_directory.filePath(name); }

    /// Makes the file and the directories that lead to it.
    void write(const QString& name, const QByteArray& content) const {
        const QFileInfo info(path(name));
        require(QDir().mkpath(info.path()), "there is a directory for the file");
        QFile file(info.filePath());
        require(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(),
                "there is room for the file");
    }

private:
    static QString pattern() {
        const QString memory = QStringLiteral("/dev/shm");
        return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) +
               QStringLiteral("/quorvin-fuzz-XXXXXX");
    }

    QTemporaryDir m_directory{pattern()};
};

} // namespace quorvin::testing
