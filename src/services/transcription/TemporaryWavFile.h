#pragma once

#include <QByteArray>
#include <QString>

#include <stdexcept>

namespace quorvin {

/// A file that could not be written; `what` is the system's reason.
class FileWriteError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// One take on disk for as long as this object lives, in a new file that only this user may read or
/// write (mode 0600). Its name, "quorvin_<UUID in upper case>.wav", is how orphans of a crashed
/// program are found.
class TemporaryWavFile {
public:
    /// Throws FileWriteError and then leaves no file behind.
    TemporaryWavFile(const QString& directory, const QByteArray& contents);
    ~TemporaryWavFile();
    TemporaryWavFile(const TemporaryWavFile&) = delete;
    TemporaryWavFile& operator=(const TemporaryWavFile&) = delete;

    [[nodiscard]] const QString& path() const { return m_path; }

private:
    QString m_path;
};

} // namespace quorvin
