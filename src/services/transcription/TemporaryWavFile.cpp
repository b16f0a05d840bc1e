#include "services/transcription/TemporaryWavFile.h"

#include <QDir>
#include <QFile>
#include <QUuid>

namespace quorvin {

using namespace Qt::Literals::StringLiterals;

namespace {

QString newName() {
    return u"quorvin_"_s + QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper() + u".wav"_s;
}

} // namespace

TemporaryWavFile::TemporaryWavFile(const QString& directory, const QByteArray& contents)
    : m_path(QDir(directory).filePath(newName())) {
    QFile file(m_path);
    // The permissions go into the call that makes the file: nobody can open it in between.
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered,
                   QFileDevice::ReadOwner | QFileDevice::WriteOwner)) {
        throw FileWriteError(file.errorString().toStdString());
    }
    if (file.write(contents) != contents.size()) {
        const std::string reason = file.errorString().toStdString();
        file.remove();
        throw FileWriteError(reason);
    }
}

TemporaryWavFile::~TemporaryWavFile() {
    QFile::remove(m_path);
}

} // namespace quorvin
